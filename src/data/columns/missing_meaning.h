// Which numbers of a source stand for no value, by its head and by its columns. Knows names and sampled values; fills in what the
// source's description keeps.
#pragma once

#include <string_view>

#include "data/columns/import_source.h"

namespace tarnwick {

struct ImportOptions;

/// Recognises numbers that stand for no value (MissingValues), unless the options say which do: those that the head of `text`
/// declares, and those that the values of a column give away. The guesses' values are without them from then on.
void SettleMissingValues(const ImportOptions& options, std::string_view text, char line_end,
                         ImportSource& source);

/// The same of numbers whose rows lift the pen in the text of a map's outlines (FindPenMarks), where they lie beyond all values
/// of its columns.
void SettlePenMarks(const ImportOptions& options, std::string_view text, char line_end,
                    ImportSource& source);

}  // namespace tarnwick
