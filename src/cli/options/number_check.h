// Checks of numbers on the command line. Each has the name that help shows, what is wanted in words, and the rule.
#pragma once

#include <cmath>

namespace tarnwick::cli {

/// Refuses a number that `allowed` does not hold for, NaN among it, as "TEXT is not WANTED".
struct NumberCheck {
  const char* name;
  const char* wanted;
  bool (*allowed)(double);
};

constexpr NumberCheck kFiniteNumber{"FINITE", "a finite number",
                                    [](double value) { return std::isfinite(value); }};
constexpr NumberCheck kPositiveNumber{"POSITIVE", "a finite number above 0", [](double value) {
                                        return value > 0 && std::isfinite(value);
                                      }};
constexpr NumberCheck kNonNegativeNumber{
    "NONNEGATIVE", "a finite number of at least 0",
    [](double value) { return value >= 0 && std::isfinite(value); }};
constexpr NumberCheck kProperFraction{"FRACTION", "a number between 0 and 1",
                                      [](double value) { return value > 0 && value < 1; }};

}  // namespace tarnwick::cli
