// Marks on a graph: their editor, and what they do to the data.
#pragma once

#include "desk/feature/feature.h"

namespace tarnwick {

Feature MarksFeature();

}  // namespace tarnwick
