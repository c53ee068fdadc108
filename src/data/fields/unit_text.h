// A number with its unit behind it. Knows no columns and no formats, and nothing of what a unit means.
#pragma once

#include <optional>
#include <string_view>

namespace tarnwick {

/// "12.5 mV" taken apart. The unit views the text; empty where none stands.
struct NumberAndUnit {
  double number = 0;
  std::string_view unit;
  /// What stands behind the number as its error: 0.2 of "12.5 ± 0.2", 0.3 of "12.5(3)", 10 of "120(10)"; not what is in
  /// brackets behind a blank, which may be anything.
  std::optional<double> uncertainty = {};
  bool joined = false;  ///< the unit stands right behind the digits
};

/// The finite number that `text` begins with and the unit behind it, blanks between or not: letters, "%", signs beyond
/// ASCII ("°", "µ", "Ω"), words joined by ". / * ^ - ( )", each with at most one digit behind it ("m2", "kg m-3"). A sign of
/// currency may stand before the number instead; behind "± 0.2", "+/- 0.2 mV" or "(5)" no unit is told. Nothing for what only
/// looks so: "9a" and "1f" (hexadecimal), "2nd",
/// "12:30", "3/4", "1h30", "4ABC12", dates, words of more than three letters behind others ("12 Main Street"), and "1,234 V",
/// where the comma may be either separator.
std::optional<NumberAndUnit> SplitUnit(std::string_view text);

}  // namespace tarnwick
