// The runs of a table as DataSets of their own. Knows what an import made; knows no file.
#pragma once

#include <cstdint>
#include <string>

#include "data/import/import_file.h"

namespace tarnwick {

/// A table of more runs, or of more DataSets than this, stays whole, its lines broken between the runs.
inline constexpr std::size_t kMostRuns = 50, kMostRunDataSets = 200;

/// "NAME, run 2", NAME for the first; and NAME of that, where it is called so.
std::string NameOfRun(const std::string& name, std::int32_t run);
std::string NameWithoutRun(const std::string& name, std::int32_t run);

/// Where empty lines or remarks part the rows that `result` was loaded from into runs (by the rules of PieceFinder), each becomes
/// a DataSet named "NAME, run 2", or after a line of names above it, which is told; not more than eight runs shorter than four
/// points in the mean, as the pieces of a contour are. Reads the supplier once more.
void SplitRuns(ImportResult& result, TDataSupplier& supplier, const LoadOptions& load,
               const SeriesFactory& make);

}  // namespace tarnwick
