// Whether names stand over a clock when they are read from the left. Knows lines of names and rows; decides nothing about which
// line names the columns.
#pragma once

#include <span>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// True where a line of `above` has one field less than the rows, and its field called a time or a date, none the first, stands
/// over what is one in every row when both are counted from the left, but over none when counted from the right. For rows that
/// are parted by other separators than blanks.
bool NamesClockFromLeft(std::span<const std::string_view> above,
                        std::span<const std::string_view> rows, const TextLayout& layout);

}  // namespace tarnwick
