// The way of a DataSet's line through its points, as its style and its gaps have it. Draws nothing.
#pragma once

#include "data/points/line_way.h"
#include "graph/series.h"

namespace tarnwick {

/// True where the line joins the points as they came, and X both rises and falls along it: what takes them in order of X puts
/// points of its branches beside each other.
bool TurnsBack(const TSeries& series);

/// As it is drawn.
LineWay WayOf(const TSeries& series);

/// As something is computed along it: in order of X unless that turns back.
LineWay WayToCompute(const TSeries& series);

/// "The line of "U" is broken at 3 gaps", to which a sentence adds what that means for it.
std::string BrokenAt(const TSeries& series, std::size_t gaps);

}  // namespace tarnwick
