// What the lines of a text say against the table that was found in it: every line and every value is accounted for, or told.
// Knows the text, its layout and its columns, and none of the reasons of the guess.
#pragma once

#include <string_view>

#include "data/doubts/doubt.h"

namespace tarnwick {

/// A line of values right above the first row; single rows with more fields than columns; remarks between rows that name other
/// columns; a last row that holds the sums or means of the others. `source` has its columns and names; what
/// `format` tells is not said again. Looks at the first four thousand rows.
Doubts DoubtsOfRows(const ImportSource& source, const TextFormat& format, std::string_view text,
                    char line_end);

}  // namespace tarnwick
