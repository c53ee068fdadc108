// Rows that stand above where a table was found: they belong to it, or they are left out and told. Knows lines and fields; knows
// no names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/column_judge.h"
#include "data/guess/first_row.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// The first of the rows above line `first` that have a value wherever the body has numbers, or for less than half of these what
/// stands for a missing one or a label like their units: more texts among them may have passed for lines of text. Separators but
/// blanks may leave them fields more or less than the body; comments may stand between.
std::size_t WithAlikeRowsAbove(std::span<const std::string_view> lines, std::size_t first,
                               const TextLayout& layout, const TableBody& body);

/// Between blanks, the first of the rows above `table` among `lines` with values wherever the body has numbers and with another
/// number of fields than most rows, as some row below has: a table some of whose rows are longer may begin with one. So it may
/// with rows that leave out their end, where their first column steps as that of the rows below does.
std::size_t WithRowsAsBelow(std::span<const std::string_view> lines, const FoundTable& table,
                            const TextLayout& layout, const TableBody& body);

/// True for a line with values in more than half of the columns that hold numbers, two at least, and none where the rows hold
/// texts.
bool HoldsValuesAsRows(std::string_view line, const TextLayout& layout,
                       std::span<const ColumnGuess> columns);

/// Lines of values that are no rows of the table.
struct ValuesAbove {
  std::int32_t lines = 0;
  std::int32_t from = 0;  ///< the first of them, from 1
};

/// Among `above`, the lines between the names and the first row, those with values as the rows have, but none above more than a
/// few lines of text. `first_line` is the number of the first of them, from 1.
ValuesAbove FindValuesAbove(std::span<const std::string_view> above, std::int32_t first_line,
                            const TextLayout& layout, std::span<const ColumnGuess> columns);

}  // namespace tarnwick
