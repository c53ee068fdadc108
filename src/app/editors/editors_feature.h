// The editors of graphs and data as commands. They are libraries beside the program, loaded when first wanted.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature EditorsFeature();

}  // namespace tarnwick
