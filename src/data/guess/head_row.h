// Lines that look like the first rows of a table and are none: numbers of columns above their names, and rows whose values are
// far from all below. Knows lines and fields.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/first_row.h"

namespace tarnwick {

/// The first row behind line `first`, where that counts the columns ("1 2 3 4") above a line with as many words, which names
/// them; where a remark parts many values that rise along it from rows that do not; or where three of its values or more, a third
/// at least, are a hundred times farther from those of the rows below than these are from each other. `first` where neither is
/// so.
std::size_t BehindHeadRow(std::span<const std::string_view> lines, std::size_t first,
                          const TextLayout& layout, const TableBody& body);

}  // namespace tarnwick
