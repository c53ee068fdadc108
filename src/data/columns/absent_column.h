// What is said where a source has no column of a name. Knows suppliers and words.
#pragma once

#include <string_view>

#include "base/error.h"

namespace tarnwick {

class TDataSupplier;

/// "There is no column "x": /data/run.csv, columns: a, b, c", of these the first twelve.
FileError AbsentColumn(std::string_view name, TDataSupplier& supplier);

}  // namespace tarnwick
