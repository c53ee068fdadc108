// Which of several models fitted to the same points is worth its parameters. Knows jobs and results; fits nothing but curves of
// models to one another.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "analysis/fits/fit_job.h"
#include "fit/fit_result.h"

namespace tarnwick {

/// One model within another: the larger one's gain against what chance would gain.
struct NestedTest {
  std::size_t smaller = 0;
  std::size_t larger = 0;
  double ratio = 0;        ///< F
  std::int64_t added = 0;  ///< varied parameters more, the degrees of freedom above
  std::int64_t free = 0;   ///< of the larger model's residuals, those below
  double probability = 0;  ///< that chance makes F greater; undefined where F does not tell
};

struct RankedModel {
  std::size_t number = 0;  ///< among those compared
  double difference = 0;   ///< of AICc to the least; undefined without an AICc
  double weight = 0;       ///< Akaike's, of all that have one
};

struct FitComparison {
  std::vector<RankedModel> ranks;  ///< the least AICc first, models without one last
  std::vector<NestedTest> tests;
};

/// AICc, differences and weights: Burnham & Anderson, Model Selection, 2002, chapters 2.4 and 2.9. F tests (Seber & Wild,
/// Nonlinear Regression, 1989, chapter 5.4) where both models were fitted by least squares with weights of their own to neither,
/// and the larger one takes on the smaller one's curve: fitted to that curve, at the values found and at two others, it leaves
/// less than 1e-9 of it. Where it does so with more than one set of values, as a second peak of no height may stand anywhere,
/// chance gains more than F allows for (Davies, Biometrika 64, 1977, 247), and the test has no probability. Throws Error when the
/// jobs have different points, and as RunFit.
FitComparison CompareFits(std::span<const FitJob> jobs, std::span<const FitResult> results);

}  // namespace tarnwick
