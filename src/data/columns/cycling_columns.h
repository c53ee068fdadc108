// Columns that go through the same values at each X: the places of probes that are read one after the other. Knows sampled
// values and names.
#pragma once

#include <cstdint>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// The columns of numbers that have the same values, more than one, in the same order for each X of the rows looked at, where
/// each X stands for as many rows, 2 to 20, and they rise or fall. Empty where there are none, or X is in no column.
std::vector<std::int32_t> FindCyclingColumns(const ImportSource& source, std::int32_t x);

/// True for a cycling column of whole numbers that are all different at one X, and is called as what numbers objects
/// ("num_ele", "probe"): each number stands for one of them.
bool NumbersObjects(const ImportSource& source, std::int32_t x, std::int32_t column);

}  // namespace tarnwick
