// An expression over several DataSets. Knows DataSets and the expression engine; no graph.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "data/series/data_series.h"

namespace tarnwick {

/// The most DataSets that an expression may have: A to D.
inline constexpr std::size_t kMostOperands = 4;

/// What came of it: points in order of X, and why some of the first DataSet's have none.
struct ArithmeticResult {
  std::vector<double> x;
  std::vector<double> y;
  std::vector<double> error;      ///< of Y; empty where no DataSet has errors
  std::size_t without_value = 0;  ///< the DataSets have values, the expression has none
  std::size_t beyond = 0;         ///< another DataSet that the expression uses has no value there
};

/// The value at each X of the first of `operands`, which expressions call X, A, B, C, D in their order; a value is Y less the
/// base line, of the others on the line between its neighbours. Errors of Y are carried on by the derivatives as those of
/// values independent of each other; a point that uses one without an error, of a DataSet that has errors, has none. Throws
/// Error, a sentence with the place, for an expression that cannot be compiled, or names something else.
ArithmeticResult Calculate(const std::string& expression,
                           std::span<const TDataSeries* const> operands);

}  // namespace tarnwick
