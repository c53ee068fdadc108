// What the program tells of itself.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature HelpFeature();

}  // namespace tarnwick
