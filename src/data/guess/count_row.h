// Lines above the rows that say how many they are: "1000 2". Knows lines and fields; knows no names.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/first_row.h"

namespace tarnwick {

/// The first row behind line `first`, where that or one of the next two is a line of whole numbers that tells the number of data
/// lines behind it and is unlike these: a column has decimals where it has none, the first column counts the rows and it begins
/// with their number, or its other numbers are the greatest of their columns, as sizes are. So is a line that is written
/// otherwise than all rows, below a number that parts these evenly. `first` where there is none. `lines` are the first of `text`,
/// of which no more is read than so many lines.
std::size_t BehindCounts(std::span<const std::string_view> lines, std::size_t first,
                         std::string_view text, const TextLayout& layout, const TableBody& body);

}  // namespace tarnwick
