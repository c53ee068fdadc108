// The judgement of a fit: what a FitResult's numbers mean, in sentences for its user. Knows no model and no DataSet; computes
// no figure of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

/// Coordinates whose squares, in units such as these, are beyond what a computer's numbers hold.
struct ExtremeData {
  char axis = 'Y';
  double greatest = 0;  ///< their greatest absolute value
};

/// What the verdict needs beside the result: how the fit was asked for and what its run met.
struct FitCircumstances {
  FitProcType method = FitProcType::cfp_Newton;
  std::int32_t max_iterations = 0;
  std::int32_t thinned_to = 0;    ///< the model's NPoints
  bool regression_curve = false;  ///< the points are those of the DataSet's regression curve
  std::optional<ExtremeData> extreme_data;
  /// X of the first point without a value of the model at the start, and how many such points there are.
  std::optional<double> first_undefined_x;
  std::int64_t undefined_at_start = 0;
  bool weighted_unasked = false;  ///< by errors that the DataSet has
  /// Of an expression with a sign before a power (SignWarning); else empty.
  std::string sign_warning;
  /// Names in the expression that are neither its variable nor a parameter.
  std::vector<std::string> unknown_names;
  /// Parameters, varied or not, whose value at the start is no finite number.
  std::vector<std::string> infinite_names;
};

/// How far a finishing Newton-type run would move the parameters, in standard errors (of all of them together); 0 when it was
/// not tried or would not improve, infinite when it would leave nothing of the sum of squares.
double DistanceToBestFit(const FitResult& result);

/// The fit has settled, and a finishing Newton-type run, where it was tried, found nothing better that matters.
bool HasConverged(const FitResult& result);

/// Needs everything of `result` but its verdict.
FitVerdict JudgeFit(const FitResult& result, const FitCircumstances& circumstances);

}  // namespace tarnwick
