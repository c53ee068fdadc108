// What speaks against a column as that over which the others are drawn: it tells kinds, objects or rows apart, or is one of
// several that were measured side by side. Knows names and sampled values.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// Answers to questions: three whole values at most, "1", "0", and "-1" where not asked, in no order.
bool HasFewWholeValues(const std::vector<double>& values);

/// Two values in eight rows or more.
bool HasTwoValues(const std::vector<double>& values);

/// The column is no X while another one or the number of the row can be: the number of a person, a class or another code, a
/// column that is called Y, or one with other texts than
/// numbers in most rows ("Inf"). Never so for days and times, nor for
/// codes that are called as what others are measured over.
bool SpeaksAgainstX(const ImportSource& source, std::int32_t column);

/// All these columns are called alike but for a number at their ends ("I1", "I2", "to 0", "to 1"; not "x1", "column2"),
/// three at least, and the first of them is in no order: they stand side by side.
bool AreItems(const ImportSource& source, std::span<const std::int32_t> columns);

}  // namespace tarnwick
