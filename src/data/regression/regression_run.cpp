#include "data/regression/regression_run.h"

#include <algorithm>

#include "base/error.h"
#include "data/regression/regression.h"

namespace tarnwick {

namespace {

CurveSampling SamplingOf(const PointChain& points, std::int32_t steps) {
  CurveSampling sampling;
  sampling.steps = std::min(steps, CurveSampling::MostSteps(points.Size()));
  if (!points.Empty()) {
    sampling.x_min = points.Front().x;
    sampling.x_max = points.LastX();
  }
  return sampling;
}

}  // namespace

std::optional<Quadratic> RegressionPolynomial(const PointChain& points, RegressionType type) {
  switch (type) {
    case RegressionType::Parabola:
      return FitParabola(points);
    case RegressionType::RobustLine:
      return FitRobustLine(points);
    case RegressionType::Line:
      return FitLine(points);
    default:
      return std::nullopt;
  }
}

PointChain RunRegression(PointChain& points, const RegressionTask& task) {
  switch (task.type) {
    case RegressionType::None:
      throw Error("internal error: regression");
    case RegressionType::Parabola:
    case RegressionType::RobustLine:
    case RegressionType::Line:
      EvaluateInto(points, *RegressionPolynomial(points, task.type));
      return {};
    case RegressionType::Spline:
      points.ClearRegression();
      if (task.duplicates == Duplicates::Allowed || task.steps == 0) return {};
      return SplineCurve(points, SamplingOf(points, task.steps), task.alpha);
    case RegressionType::Smoother:
      points.ClearRegression();
      return SmoothedCurve(points, SamplingOf(points, task.steps));
    case RegressionType::ExponentialSmoothing:
      SmoothExponentially(points, task.alpha);
      return {};
    case RegressionType::RunningAverage:
      AverageRunning(points, task.alpha);
      return {};
  }
  throw Error("Unknown regression type");
}

}  // namespace tarnwick
