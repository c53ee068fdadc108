// Whether rows among the lines of a text are a table worth reading, or an accident of much text. Knows where tables stand.
#pragma once

#include <cstddef>
#include <span>

#include "data/guess/format_guess_lines.h"
#include "data/guess/table_search.h"

namespace tarnwick {

inline constexpr std::size_t kFewRows =
    10;  ///< that are a table only where they are much of the text
inline constexpr double kTableDensity =
    0.6;  ///< share of values among the fields of a table that is one

/// `table` is one of `all` that were found among the first of `lines`.
bool IsWorthIt(const FoundTable& table, std::span<const FoundTable> all, const GuessLines& lines,
               const TextLayout& layout);

/// Whether it is to be told that `other` stands beside the table that is read. Values among words, as preambles have them, are
/// not worth it, but rows of several columns that only their number of columns parts from those that are read.
bool IsWorthTelling(const FoundTable& other, const FoundTable& read);

}  // namespace tarnwick
