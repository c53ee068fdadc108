// Edits of a graph's marks, and the two edits that a mark brings about: a DataSet's base line and the origin of X. Each
// tells the graph's listener. Knows no dialog and no mouse.
#pragma once

#include <cstdint>

#include "data/series/extremes.h"
#include "graph/mark.h"

namespace tarnwick {

class TSeries;
class TxyGraph;

/// The current mark; null when none is, or when it was deleted.
const Mark* CurrentMark(const TxyGraph& graph);
/// Ignored when no mark has that ID.
void SetCurrentMark(TxyGraph& graph, std::int32_t id);

/// Stores a mark under the lowest free ID, which is answered and becomes current. An empty caption becomes the ID.
std::int32_t AddMark(TxyGraph& graph, const Mark& mark);
/// Overwrites the mark with this ID, or inserts it.
void SetMark(TxyGraph& graph, const Mark& mark);
/// False when no mark has that ID.
bool DeleteMark(TxyGraph& graph, std::int32_t id);
void ClearMarks(TxyGraph& graph);

/// A way across the picture in pixels, right and down positive.
struct PixelWay {
  double right = 0;
  double down = 0;
};

/// What of a mark is moved: only lines, arrows and rectangles have an origin and an end of their own.
enum class MarkPart { Whole, Origin, End };

/// The mark after moving it across the picture. What its type has no use for stays, and so does a coordinate that is not
/// in the picture's map (not finite, or not positive on a logarithmic axis).
Mark MovedMark(const TxyGraph& graph, const Mark& mark, const PixelWay& way,
               MarkPart part = MarkPart::Whole);
/// Moves a mark so; false when no mark has that ID.
bool MoveMark(TxyGraph& graph, std::int32_t id, const PixelWay& way);

/// Gives a DataSet that base line; its automatic zero goes off.
void SetBaseLine(TSeries& series, const BaseLine& line);
/// Makes a horizontal or line mark the base line of a DataSet, whose automatic zero goes off. Throws Error "No Mark Found!"
/// (null), "Mark Can Not be a Vertical Line" (a segment that is one), "Mark must be Either Linier or Horizontal"; nothing
/// is changed then.
void SetBaseLine(TSeries& series, const Mark* mark);
/// The same for current DataSet and current mark. Throws Error also "No Mark Selected!", "No DataSet Selected!" and "DataSet
/// must be Plotted in Main Axes!".
void SetBaseLineFromCurrentMark(TxyGraph& graph);

/// Moves every DataSet in X, and the marks along: vertical lines, points and both ends of lines.
void ShiftGraphX(TxyGraph& graph, double shift);
/// Moves every DataSet and every mark in X so that a vertical mark comes to stand at 0. Throws Error "No Mark Found!" (null)
/// and "Mark must be a Vertical Line"; nothing is changed then.
void MoveXOrigin(TxyGraph& graph, const Mark* mark);
/// The same for the current mark. Throws Error also "No Mark Selected!" and "No DataSet Selected!".
void MoveXOriginToCurrentMark(TxyGraph& graph);

}  // namespace tarnwick
