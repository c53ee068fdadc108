// How the name of a column is written as that of the error of another one: "yerr", "s_y", "u(y)", "Δy", "flux SE". Knows
// words and letters only.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// How surely a name so written is that of an error, if there is a column called as it says.
enum class ErrorSign : std::uint8_t {
  LetterOfLetter,  ///< "sa" of "a": only where another column has its own so, too
  Function,        ///< "u(y)", that may be a function of y
  Letter,          ///< "sy", "e_flux", "ΔT": a quantity of its own may be called so
  Word             ///< "yerr", "y_se", "sigma y"
};

/// One way to read a name as that of an error.
struct ErrorReading {
  std::string value;  ///< what it would be the error of, as SquashedName writes it
  ErrorSign sign = ErrorSign::Word;
  bool difference = false;  ///< "ΔT", "d_T": may as well be a step
  bool counted = false;     ///< "err_counts": whole numbers are how many errors there were

  bool operator==(const ErrorReading&) const = default;
};

/// The readings of a column's name, the surest first; none of a name that is an error's and names nothing ("err", "sd").
std::vector<ErrorReading> ReadAsError(std::string_view name);

/// The letters and digits of a name, in small letters.
std::string SquashedName(std::string_view name);

/// The same without what stands in brackets behind the name: "U" of "U (mV)".
std::string SquashedWithoutUnit(std::string_view name);

}  // namespace tarnwick
