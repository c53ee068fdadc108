// Edits of single points of a DataSet in a graph: move, insert, delete, and the questions asked before. Points are given
// where they are drawn, that is corrected by the base line. Knows no mouse and asks nothing itself.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "data/points/point_changes.h"

namespace tarnwick {

class TSeries;
class TxyGraph;
struct PointErrors;

/// A place on the plot in data units; y corrected by the DataSet's base line.
struct PlotPoint {
  double x = 0;
  double y = 0;
};

/// "Delete Point Voltage.# 3  X,Y: 1, 2 ?" ("  X,Y2: " on the second Y axis). Empty when no point has that id.
std::string DeletePointQuestion(const TxyGraph& graph, const TSeries& series, std::int32_t id);
/// "Move Point Voltage.# 3  X,Y: 1, 2 to 1.5, 2.5 ?". Empty when no point has that id.
std::string MovePointQuestion(const TxyGraph& graph, const TSeries& series, std::int32_t id,
                              const PlotPoint& to);

/// Throws Error "Can not Move to Negative Values in Log Scale!" when an axis of the DataSet is logarithmic and the place has
/// no positive value there, and Error for a place that is not finite.
void CheckMove(const TxyGraph& graph, const TSeries& series, const PlotPoint& to);

/// Moves a point, which keeps its id wherever it comes to stand in the order. Where duplicates are not allowed it takes
/// the place of a point within the tolerance of its new X. False when no point has that id. Throws as CheckMove does.
bool MovePoint(const TxyGraph& graph, TSeries& series, std::int32_t id, const PlotPoint& to);

/// Throws Error "This option is valid only for dataSet with manual source" for any other DataSet.
void CheckInsert(const TSeries& series);

/// Adds a point by the DataSet's rules; answers its id, or that of the point it overwrote. Throws as CheckInsert does, and
/// Error for a place that is not finite.
std::int32_t InsertPoint(TSeries& series, const PlotPoint& at);

/// Deletes the points at the places from `first` to `last` (from 0), both included.
void DeletePoints(TSeries& series, std::size_t first, std::size_t last);

/// Overwrites stored Y of the points at `first` and behind it, as far as there are points. Answers how many.
std::size_t OverwriteY(TSeries& series, std::size_t first, std::span<const double> y);

/// Makes points what they were, with their ids and, out of `errors`, their own errors. Where duplicates are not allowed they
/// take the place of points within the tolerance.
void PutBack(TSeries& series, std::span<const PointChange> changes, const PointErrors& errors);
/// Gives the DataSet these points with their ids, of which none is above `last_id`, and their errors.
void PutBackAll(TSeries& series, const PointChain& points, std::int32_t last_id,
                const PointErrors& errors);

}  // namespace tarnwick
