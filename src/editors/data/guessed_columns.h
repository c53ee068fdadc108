// Which columns a description that was guessed anew reads. Knows columns; opens nothing.
#pragma once

#include "data/columns/import_source.h"

namespace tarnwick {

/// The description that `guessed` has, with the columns, expressions and errors of `before` where its X and Y are still there,
/// else with those that a first look would take; formats are what the columns hold. Throws FileError where there are no numbers.
TDSInfo WithColumns(const ImportSource& guessed, const TDSInfo& before);

}  // namespace tarnwick
