// How graph windows stand in the workspace.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature WindowsFeature();

}  // namespace tarnwick
