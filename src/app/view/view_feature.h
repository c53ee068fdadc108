// How a graph is looked at: scales, grid, legend.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature ViewFeature();

}  // namespace tarnwick
