// The number that one field of text means. Knows column formats; knows no lines and no markers.
#pragma once

#include <optional>
#include <string_view>

#include "data/ds_info.h"

namespace tarnwick {

/// The finite number that `text` (without markers, blanks allowed at its ends) means by `format`, dates and times as day
/// numbers; nothing when it means none. "NaN" and infinities are no numbers here: such a row is skipped and counted.
/// Numbers may be written as some programs do: with a "D" before the exponent, the true minus sign, or digits grouped in
/// threes by no-break blanks or apostrophes, where the format is DecimalComma or GroupedThousands also by plain blanks. The
/// date formats also read what ParseCompactDay reads. Of two numbers in one field NumberWithUnit reads none (SplitUnit).
std::optional<double> ValueOfField(std::string_view text, ColumnFormat format);

/// The value of "1,234,567.89": commas group three digits each, the point is the decimal separator.
std::optional<double> ParseGroupedThousands(std::string_view text);

/// The value of "1.234.567,89": points group three digits each, the comma is the decimal separator.
std::optional<double> ParseDecimalComma(std::string_view text);

}  // namespace tarnwick
