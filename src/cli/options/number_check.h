// Checks of numbers on the command line. Knows texts only: what is no number at all is left to the option parser.
#pragma once

#include <CLI/App.hpp>

namespace tarnwick::cli {

/// A finite number.
CLI::Validator FiniteNumber();
/// A finite number above 0.
CLI::Validator PositiveNumber();
/// A finite number of at least 0.
CLI::Validator NonNegativeNumber();
/// A number above 0 and below 1.
CLI::Validator ProperFraction();

}  // namespace tarnwick::cli
