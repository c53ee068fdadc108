// The display panel, which shows fitted values as they are found, and its commands.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature DisplayFeature();

}  // namespace tarnwick
