// Commands that give the mouse another meaning on the graph, until it is done or the command is chosen again.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature ModesFeature();

}  // namespace tarnwick
