// Steps back and forth, the clipboard, whole DataSets, inserted graphs.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature EditFeature();

}  // namespace tarnwick
