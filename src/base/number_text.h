// Numbers to text and back, always with "." and never through a locale. Knows no dates.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tarnwick {

/// The text of fewest significant digits that reads back as the same double: fixed form where 1e-5 <= |value| < 1e15,
/// else like "3E-8", "1.5E20". NaN is "NaN", the infinities are "INF" and "-INF", minus zero is "-0".
std::string ShortestText(double value);

/// The general number format: at most `digits` (1 to 17) significant digits, trailing zeros dropped, fixed form where
/// 1e-5 <= |value| < 10^digits (after rounding), else like "3E-8", "1.5E20". NaN and infinities as in ShortestText.
std::string GeneralText(double value, int digits = 15);

/// Fixed form with `decimals` (0 to 100) digits after the point, never "-0". NaN and infinities as in ShortestText.
std::string FixedText(double value, int decimals);

/// The number that the whole of `text` means, blanks and tabs around it apart. The decimal separator is "." or ","
/// (only one of them, once); a sign and an exponent may stand. "NaN", "INF", "INFINITY" are read in any case.
/// Nothing when the text is no number. A number out of range becomes an infinity or zero.
std::optional<double> ParseNumber(std::string_view text);

/// The decimal integer that the whole of `text` means, blanks and tabs around it apart. Nothing when it is none or
/// does not fit.
std::optional<std::int32_t> ParseInteger(std::string_view text);

/// "1 point", "3 points" of "point".
std::string Counted(std::int64_t count, std::string_view thing);

/// `text` without the blanks and tabs at its ends.
std::string_view TrimBlanks(std::string_view text);

}  // namespace tarnwick
