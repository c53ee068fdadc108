// An opened source to finished DataSets, and to a summary of its columns: the second half of reading a file, for sources
// that are none. Knows the loader; opens nothing.
#pragma once

#include "data/columns/import_source.h"
#include "data/import/import_file.h"

namespace tarnwick {

/// What ImportFile does with the source that it has opened. Throws FileError.
ImportResult ImportOpened(ImportSource source, const ImportOptions& options,
                          const LoadOptions& load, const SeriesFactory& make);

/// What SummarizeFile does with it.
SourceSummary SummarizeOpened(const ImportSource& source, Progress& progress);

}  // namespace tarnwick
