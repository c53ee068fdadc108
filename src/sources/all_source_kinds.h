// All kinds of data source that the program has, for whoever loads. Knows the tables, no single kind.
#pragma once

#include "data/import/source_kinds.h"

namespace tarnwick {

/// The kinds of this layer, then the basic ones (the last takes every file).
SourceKinds AllSourceKinds();

}  // namespace tarnwick
