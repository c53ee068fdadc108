// Which formats of columns concern numbers that a source stores as numbers. Knows formats; no source.
#pragma once

#include "data/ds_info.h"

namespace tarnwick {

/// Formats that a stored number needs no reading by. To the others, those of times, its digits are a text to be read.
bool TakesNumbers(ColumnFormat format);

}  // namespace tarnwick
