// Where the rows of a table begin below its head, whose lines may hold numbers as well. Knows lines and fields.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "data/text/column_judge.h"
#include "data/text/text_fields.h"

namespace tarnwick {

/// The first row of a table that begins at line `from`, by the columns that hold numbers: it holds values where the rows
/// further down do. A line of names may hold numbers too ("x;2019;2020"), but its first column is a text then, and only
/// one such line may come.
std::size_t FirstRow(std::span<const std::string_view> lines, std::size_t from,
                     const TextLayout& layout, const std::vector<ColumnGuess>& columns);

}  // namespace tarnwick
