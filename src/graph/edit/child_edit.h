// Edits of the graphs inserted into a graph: insert, place, delete, clear. Knows fractions of the parent and its pixels, no
// mouse.
#pragma once

#include <cstddef>

#include "graph/xy_graph.h"

namespace tarnwick {

/// An inserted graph is not made smaller than so many pixels either way, nor moved further out than that.
inline constexpr int kSmallestChild = 24;

/// Inserts an empty graph with the default appearance and this title; answers its index. It stands in another corner than
/// usual where it would hide captions of marks there. Needs a QGuiApplication when there are marks.
std::size_t InsertChild(TxyGraph& graph, const std::string& title);

/// Gives a child graph a place, in pixels of the parent as large as it is now; it is kept as fractions, so that it goes
/// along with the parent's size. What would be too small or out of reach is corrected. Nothing happens while the parent
/// has no size, or when there is no such child.
void SetChildPlace(TxyGraph& graph, std::size_t index, TxyChildGr::Place place);
/// Moves a child graph by so many pixels, right and down positive.
void MoveChild(TxyGraph& graph, std::size_t index, int right, int down);

void ClearChildren(TxyGraph& graph);

}  // namespace tarnwick
