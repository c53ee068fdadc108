#include "cli/options/number_check.h"

#include <cmath>
#include <optional>
#include <string>
#include <utility>

#include "base/number_text.h"

namespace tarnwick::cli {
namespace {

/// Refuses what `allowed` does not hold for, NaN among it, as "TEXT is not WANTED".
CLI::Validator Check(const char* name, std::string wanted, bool (*allowed)(double)) {
  return {[wanted = std::move(wanted), allowed](std::string& text) {
            const std::optional<double> value = ParseNumber(text);
            return !value || allowed(*value) ? std::string() : text + " is not " + wanted;
          },
          name};
}

}  // namespace

CLI::Validator FiniteNumber() {
  return Check("FINITE", "a finite number", [](double value) { return std::isfinite(value); });
}

CLI::Validator PositiveNumber() {
  return Check("POSITIVE", "a finite number above 0",
               [](double value) { return value > 0 && std::isfinite(value); });
}

CLI::Validator NonNegativeNumber() {
  return Check("NONNEGATIVE", "a finite number of at least 0",
               [](double value) { return value >= 0 && std::isfinite(value); });
}

CLI::Validator ProperFraction() {
  return Check("FRACTION", "a number between 0 and 1",
               [](double value) { return value > 0 && value < 1; });
}

}  // namespace tarnwick::cli
