// Files of arrays (HDF5, NetCDF) as a kind of data source. Knows what the reader of such files answers; knows no DataSet.
#pragma once

#include <string>
#include <vector>

#include "data/import/source_kinds.h"
#include "sources/arrays/named_array.h"

namespace tarnwick {

/// The row of the table of kinds.
SourceKind ArraysKind();

/// All arrays of the file. Throws as opening does.
std::vector<NamedArray> ArraysOf(const std::string& file, Progress& progress);

}  // namespace tarnwick
