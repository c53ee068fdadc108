// The first look at a part of a file that a description names. Knows descriptions; knows no kind.
#pragma once

#include "data/columns/import_source.h"
#include "data/import/import_file.h"

namespace tarnwick {

/// What OpenImportSource finds when the file and the part of it are those of `place`, as a file of `kind`. Throws what that
/// throws.
ImportSource OpenPartOfFile(const SourceKind& kind, const TDSInfo& place, ImportOptions options,
                            Progress& progress);

}  // namespace tarnwick
