// The guess of a table seen backwards, before its data are shown: what of the text was left out, and what of it a reader would
// not take for data. Knows the text, its layout and its columns; changes nothing.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "data/columns/import_source.h"
#include "data/guess/format_guess.h"

namespace tarnwick {

/// A clause for each answer that is bad: lines far above the table, or behind a mark of remarks, that hold values as its rows do;
/// more lines of numbers without than within it; a first or last row a hundred times farther from all others than these are
/// from each other; fields that are a number in one row and a date in the next; names most of which are numbers. `source` has its
/// columns, names and missing values; of `format`, which holds what the guess says beside these, no columns are needed. Reads the
/// headers, some rows behind them and the end of the text.
std::vector<std::string> SecondLook(const ImportSource& source, const TextFormat& format,
                                    std::string_view text, char line_end);

}  // namespace tarnwick
