// Opening, loading, saving and leaving: the File menu but for paper.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature FilesFeature();

}  // namespace tarnwick
