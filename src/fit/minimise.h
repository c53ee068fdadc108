// What every minimiser takes and answers. Knows no model and no points: an objective is a function of numbers.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"

namespace tarnwick {

/// At most this many parameters may be varied in one fit.
inline constexpr std::int32_t kMaxVariedParameters = 32;
/// The message of a run with more.
inline constexpr std::string_view kTooManyParametersText =
    "Error: Maximum Number of Varied Parameters Nmax = 32 Exceeded!";

/// The sum of squares at `p`; undefined (NaN) where the model has no value.
using ScalarObjective = std::function<double(std::span<const double> p)>;

enum class StopReason {
  Converged,         ///< the stop test of the method held
  NoFurtherDescent,  ///< no step improves, but the stop test failed or proves nothing: see stop_test
  IterationLimit,
  Cancelled,          ///< by Progress, after the iteration under way; values so far are kept
  NothingVaried,      ///< no parameter to change: nothing was done
  TooManyParameters,  ///< more than kMaxVariedParameters: nothing was done
  UndefinedAtStart,   ///< the objective has no value at the start: nothing was done
  BadModel,           ///< the model could not be evaluated (its text is in `message`)
  NoPoints,           ///< no point to fit: nothing was done
};

/// True when the parameters must go back to what they were.
constexpr bool Failed(StopReason why) {
  return why == StopReason::TooManyParameters || why == StopReason::UndefinedAtStart ||
         why == StopReason::BadModel || why == StopReason::NoPoints;
}

struct MinimiseOptions {
  double tolerance = 3e-08;  ///< the method's convergence tolerance
  std::int32_t max_iterations = 200;
  /// Called once at the top of each iteration with the best parameters so far. May be empty.
  std::function<void(std::span<const double> p)> every_step;
};

struct MinimiseOutcome {
  StopReason why = StopReason::NothingVaried;
  std::string stop_test;  ///< which test held or failed, in words, for reports
  std::string message;    ///< of a failure, else empty
  std::int32_t iterations = 0;
  std::int64_t evaluations = 0;         ///< of the objective (one with derivatives counts once)
  std::int64_t search_evaluations = 0;  ///< those of a search for a better start, in vain
  /// The minimum next to the start, when the search found a lower one.
  struct LeftMinimum {
    double value = 0;  ///< the objective there
    double lower = 0;  ///< and at the one found
  };
  std::optional<LeftMinimum> left_minimum;
  double start_value = 0;  ///< objective at the start
  double value = 0;        ///< objective at `p`
  std::vector<double> p;   ///< the best parameters met; the start when nothing better was met
  bool changed = false;    ///< `p` differs from the start
};

}  // namespace tarnwick
