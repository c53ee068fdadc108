// Every feature of the desktop program, in the order of its menus: the one list that the main window is made from.
#pragma once

#include <vector>

#include "desk/feature/feature.h"

namespace tarnwick {

std::vector<Feature> Features();

}  // namespace tarnwick
