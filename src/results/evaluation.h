// What a DataSet of a graph has at an X, by its points, its regression and its model, and where they have a Y. Y is that less the
// base line, as it is drawn. Knows DataSets and models; draws nothing.
#pragma once

#include <string>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {

class TSeries;

struct Evaluated {
  std::string by;  ///< "Nearest point", "Interpolated", "Regression", "Model"
  double x = 0;
  double y = 0;
  double error =
      kUndefined;  ///< standard error of what was asked for; undefined where none is known
};

/// One line for each that has a value there, in that order; as many interpolated ones as the line passes `x` where it turns back,
/// no more than kMostCrossings.
std::vector<Evaluated> EvaluateAt(const TSeries& series, double x);

/// That the line passes `x` several times, since it turns back; empty where it does not. `found` is what EvaluateAt() gave.
std::string PassesText(const TSeries& series, double x, const std::vector<Evaluated>& found);

/// Every X at which one of them, but for single points, has that Y, in order; the model's within the X of the points. No more
/// than kMostCrossings of each.
std::vector<Evaluated> FindXWhere(const TSeries& series, double y);
inline constexpr std::size_t kMostCrossings = 100;

}  // namespace tarnwick
