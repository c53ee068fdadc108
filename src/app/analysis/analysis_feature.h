// What is computed from DataSets, as commands: the Analysis menu.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature AnalysisFeature();

}  // namespace tarnwick
