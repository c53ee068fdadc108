// What keeps a file opened without settings whole: every row as far as memory goes, and every point of repeated X. Knows
// suppliers and DataSets; asks nobody.
#pragma once

#include <string>

#include "base/progress.h"
#include "data/data_supplier.h"
#include "data/import/import_file.h"

namespace tarnwick {

/// Puts into `info` how the rows of `supplier` are sampled: as the options say, else every row up to kMostWholeRows of them
/// and beyond that, or in the graph's reduced-points mode, as many as automatic sampling lets through. Rows are counted only
/// where the size leaves a doubt; when that is cancelled, so is the loading that follows.
void ChooseSampling(TDSInfo& info, TDataSupplier& supplier, const ImportOptions& options,
                    const LoadOptions& load);

/// Every row from now on, also for readers that know nothing of AllRows.
void TakeAllRows(TDSInfo& info);

/// True where only some of the rows of a source that can be read again are loaded.
bool ShowsSomeRows(const TDSInfo& info);

/// Which rows these are: "every 10th row is shown"; empty where it is every row.
std::string SomeRowsText(const TDSInfo& info);

/// Forbids duplicates, which loading allowed, where no X repeats.
void ForbidAbsentDuplicates(TDataSeries& series);

}  // namespace tarnwick
