// One name over the columns of a date or a time: "Date  MJD  x" above "1962 1 1 37665 -0.0127". Knows lines; decides nothing
// about which line it is.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// The names on a line whose first stands over year, month and day, and whose second, if it is a time, over hour and minute or
/// hour, minute and second: these are named so, all others as the line has them. Nothing where the rows, parted by blanks, begin
/// otherwise or the names are not fewer by just these.
std::optional<std::vector<std::string>> NamesOverDate(std::string_view line,
                                                      std::span<const std::string_view> rows,
                                                      const TextLayout& layout,
                                                      std::int32_t columns);

}  // namespace tarnwick
