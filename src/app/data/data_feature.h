// The current data: reading their sources again.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature DataFeature();

}  // namespace tarnwick
