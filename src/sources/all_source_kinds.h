// All kinds of data source that the program has, for whoever loads. Knows the tables, no single kind.
#pragma once

#include "data/import/source_kinds.h"
#include "sources/database/first_picture.h"

namespace tarnwick {

/// The kinds of this layer, then the basic ones (the last takes every file). `picture` is what large tables are shown by first.
SourceKinds AllSourceKinds(FirstPicture picture = FirstPicture::Whole);

}  // namespace tarnwick
