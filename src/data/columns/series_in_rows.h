// Tables whose rows hold a series each, over what their columns are called by. Knows names and sampled texts.
#pragma once

#include "data/columns/import_source.h"

namespace tarnwick {

/// The first column holds texts, another one in each row: the rows are labelled.
bool HasRowLabels(const ImportSource& source);

/// "8336", "8337", "8315" over what was counted there.
bool AreCalledByNumbers(const ImportSource& source);

/// Columns called by dates, or behind labels of rows by numbers that rise: each row holds a series of its own.
bool HoldsSeriesInRows(const ImportSource& source);

/// Each row is a curve over what the columns are called by, behind labels that are no months: years or days, or numbers of what
/// the first name says ("time [s]").
bool HoldsCurvesInRows(const ImportSource& source);

}  // namespace tarnwick
