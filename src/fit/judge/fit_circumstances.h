// How a fit was asked for and what its run met, as far as its verdict needs to know beside the result. Knows no model and no
// DataSet.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

/// Coordinates whose squares, in units such as these, are beyond what a computer's numbers hold.
struct ExtremeData {
  char axis = 'Y';
  double greatest = 0;  ///< their greatest absolute value
};

struct FitCircumstances {
  FitProcType method = FitProcType::cfp_Newton;
  std::int32_t max_iterations = 0;
  std::int32_t thinned_to = 0;    ///< the model's NPoints
  bool regression_curve = false;  ///< the points are those of the DataSet's regression curve
  std::optional<ExtremeData> extreme_data;
  /// Which of their source's rows the points are: "every 3rd row is shown"; empty: all.
  std::string some_rows;
  /// X of the first point without a value of the model at the start, and how many such points there are.
  std::optional<double> first_undefined_x;
  std::int64_t undefined_at_start = 0;
  bool weighted_unasked = false;                 ///< by errors that the DataSet has
  bool has_x_errors = false;                     ///< the points have errors of X
  std::vector<std::string> expression_warnings;  ///< see ExpressionWarnings
  std::string variable = "x";                    ///< of the expression
  bool ignores_x = false;                        ///< the expression lacks it
  /// Names in the expression that are neither its variable nor a parameter.
  std::vector<std::string> unknown_names;
  /// Parameters, varied or not, whose value at the start is no finite number.
  std::vector<std::string> infinite_names;
  /// Weighed as counts: Y that are none, below 0 or no whole number.
  std::int64_t no_counts = 0;
  /// X of the points that count for less than a tenth under a robust loss, the farthest off first.
  std::vector<double> hardly_counted;
};

}  // namespace tarnwick
