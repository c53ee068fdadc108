// What was found out about one file, as what is said about others of its kind. Knows descriptions of sources, no file.
#pragma once

#include <span>

#include "data/import/import_file.h"

namespace tarnwick {

/// The options that read another text file as the one that these DataSets came from: the same columns by their names, rows,
/// separators and formats. Without a DataSet of a text file nothing is said.
ImportOptions OptionsLike(std::span<const TDataSeries* const> series);

}  // namespace tarnwick
