// DataSets whose X turns back from point to point as they came: loops, sweeps to and fro. Knows DataSets; draws nothing.
#pragma once

#include "graph/series.h"

namespace tarnwick {

/// True where the line joins the points as they came, and X both rises and falls along it: what takes them in order of X puts
/// points of its branches beside each other.
bool TurnsBack(const TSeries& series);

}  // namespace tarnwick
