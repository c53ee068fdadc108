// Whether columns that look constant are so to the end of their source. Knows columns and blocks of rows; no DataSet.
#pragma once

#include <cstdint>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// Of columns that have one value in the rows looked at, those that have it in all rows; rows without a value do not count.
/// Reads a text no further than to a second value. What cannot be read in blocks is believed.
std::vector<std::int32_t> ConstantThroughout(const ImportSource& source,
                                             std::vector<std::int32_t> columns);

}  // namespace tarnwick
