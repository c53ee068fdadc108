// Curve fitting: its commands, the window of settings, the panel that tells the result.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature FitFeature();

}  // namespace tarnwick
