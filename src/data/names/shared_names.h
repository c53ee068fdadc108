// Names over fields that hold several values each: "Date,NY,SF" over "2007-01-01,46;51;56,43;45;48". Knows lines and how they are
// cut; decides nothing about which line names the columns.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// Parts the values that share a field.
inline constexpr char kMarkWithinFields = ';';

/// A name for each of `columns` values where two marks other than blanks part the rows and the line holds only one of them, as
/// often as the first of `rows`: "Date", "NY 1", "NY 2", "NY 3". Nothing for other lines.
std::optional<std::vector<std::string>> SpreadNames(std::string_view line,
                                                    std::span<const std::string_view> rows,
                                                    const TextLayout& layout, std::int32_t columns);

}  // namespace tarnwick
