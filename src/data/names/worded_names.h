// Names of columns from the words that stand before the numbers of every row: "At t = 0.4  y = 0.98". Knows fields; knows no
// headers.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// A name for each of `columns` fields of `row`: of a number the words before it that `rows` have as well; where no word stands
/// between two numbers the name of the first and a number, "y 2". A unit behind a number stands in brackets behind its name.
/// Empty for words and where nothing names a number.
std::vector<std::string> NamesFromWords(std::string_view row,
                                        std::span<const std::string_view> rows,
                                        const TextLayout& layout, std::int32_t columns);

}  // namespace tarnwick
