// Graphs on paper: the windows that print and choose paper, and the printer that they keep.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature PrintFeature();

}  // namespace tarnwick
