// Names of columns that stand on two lines, one word over the other: "Temp" over "Out", a group over the columns that belong to
// it. Knows how such lines are written; knows no rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"
#include "data/names/header_lines.h"

namespace tarnwick {

/// The names that two lines give together. Between separators a word of the upper line holds up to the next one; between blanks
/// it belongs to the name that it stands over, and where both lines together have as many words as there are columns, the lower
/// goes on where the upper ends. Nothing where they cannot be put together.
std::optional<std::vector<std::string>> StackNames(std::string_view upper, std::string_view lower,
                                                   const TextLayout& layout, std::int32_t columns);

/// Where names over two lines end, and their units, by lines from 1, among those above the first row of a table in which `head`
/// was found: the line above the names, or else that of their units, makes more of them, or names go on from one line to the
/// next where none were found. Nothing when they stand on one line.
std::optional<HeaderLines> FindStackedNames(std::span<const std::string_view> above,
                                            const HeaderLines& head, const TextLayout& layout,
                                            std::int32_t columns);

}  // namespace tarnwick
