// Live links as a kind of data source: the first look at a list of them, and asking them again. Knows suppliers and
// descriptions; knows no DataSet.
#pragma once

#include <string>

#include "data/import/source_kinds.h"

namespace tarnwick {

/// The row of the table of kinds.
SourceKind LinkKind();

/// Asks the links of the list for the first time: a column each, X is the clock unless the options name one of them. Throws
/// Error for options that cannot be used, lists that hold no links, and links that do not answer, UnpackingCancelled.
ImportSource OpenLinks(const std::string& list, const ImportOptions& options, Progress& progress);

}  // namespace tarnwick
