// Where the rows of a table begin below its head, whose lines may hold numbers as well. Knows lines and fields.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"
#include "data/guess/column_judge.h"

namespace tarnwick {

/// Rows of a table from its middle, and what they say of its columns.
struct TableBody {
  std::span<const std::string_view> rows;
  std::vector<ColumnGuess> columns;
};

/// The first row of a table that begins at line `from`: it holds values where the rows further down do, and where they all have
/// one word it has that. A line of names may hold numbers too ("x;2019;2020"), but its first column is a text then.
std::size_t FirstRow(std::span<const std::string_view> lines, std::size_t from,
                     const TextLayout& layout, const TableBody& body);

/// The first of the rows right above line `first`, and below names as many, that have a few fields more or less and the same
/// kinds of fields where they share them: some write the number of the instrument behind the first row only. `first` where there
/// is none.
std::size_t WithRaggedRowsAbove(std::span<const std::string_view> lines, std::size_t first,
                                const TextLayout& layout);

}  // namespace tarnwick
