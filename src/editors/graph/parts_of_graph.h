// What a page of the graph editor is of: the DataSets or marks of a graph, and the values that several of them have in common.
// Knows graphs and sections; no widget.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "editors/graph/item_list.h"
#include "editors/graph/pages.h"

namespace tarnwick {

class TxyGraph;

/// Whether the page is of DataSets or marks that are chosen from a list.
bool HasItems(const Page& page);
/// The marks of a graph, or its DataSets, whose ids are their places.
std::vector<ListedItem> ItemsOf(const TxyGraph& graph, GraphPart::Kind kind);
bool IsThere(const TxyGraph& graph, GraphPart::Kind kind, std::int32_t id);
/// The value that all of them have; nothing when they differ.
std::optional<FieldValue> CommonValue(const TxyGraph& graph, const PageField& field,
                                      const std::vector<std::int32_t>& ids);

}  // namespace tarnwick
