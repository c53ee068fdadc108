// A line above the rows that says how many they are: "1000 2". Knows lines and fields; knows no names.
#pragma once

#include <cstddef>
#include <string_view>

#include "data/guess/first_row.h"
#include "data/text/text_fields.h"

namespace tarnwick {

/// True when `row`, the first of a table, is one of whole numbers that tells the number of data lines in `below`, the text behind
/// it, and is unlike these: the first column counts them and begins the row with their number, or a column has decimals where the
/// row has none. Reads no more of the text than so many lines.
bool CountsRowsBelow(std::string_view row, std::string_view below, const TextLayout& layout,
                     const TableBody& body);

}  // namespace tarnwick
