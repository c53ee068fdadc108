// Numbers with the letter of a factor right behind them, as simulators of circuits write: "500.p", "1.5k", "2.2Meg". Knows
// texts only.
#pragma once

#include <optional>
#include <string_view>

namespace tarnwick {

/// "p" of "500.p", and 1e-12.
struct NumberAndFactor {
  double value = 0;  ///< the number times the factor
  std::string_view letter;
};

/// A plain number with a decimal point and one of f p n u µ m k K Meg meg M G T behind it, no blank between; nothing for all
/// else. "M" is a million.
std::optional<NumberAndFactor> SplitFactor(std::string_view text);

/// The value of such a number, or of a plain one.
std::optional<double> ValueWithFactor(std::string_view text);

}  // namespace tarnwick
