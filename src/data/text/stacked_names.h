// Names of columns that stand on two lines, one word over the other: "Temp" over "Out", a group over the columns that belong to
// it. Knows how such lines are written; knows no rows.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/text/text_fields.h"

namespace tarnwick {

/// The names that two lines give together. Between separators a word of the upper line holds up to the next one; between blanks
/// it belongs to the name that it stands over, and where both lines together have as many words as there are columns, the lower
/// goes on where the upper ends. Nothing where they cannot be put together.
std::optional<std::vector<std::string>> StackNames(std::string_view upper, std::string_view lower,
                                                   const TextLayout& layout, std::int32_t columns);

/// True when `upper`, the line right above the names, or of which `lower` gives the units, is part of them: names that are alike
/// become different, or every word of it stands over a name as the rows' own heads do.
bool AreStacked(std::string_view upper, std::string_view lower, const TextLayout& layout,
                std::int32_t columns);

/// True when the names of rows between blanks go on from one line to the next.
bool AreWrapped(std::string_view upper, std::string_view lower, const TextLayout& layout,
                std::int32_t columns);

}  // namespace tarnwick
