#include "results/evaluation.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>

#include "analysis/interpolation.h"
#include "base/error.h"
#include "base/number_text.h"
#include "fit/judge/fit_bands.h"
#include "fit/model/model_copy.h"
#include "graph/line_way.h"
#include "graph/picking.h"
#include "graph/series.h"
#include "results/passes_along_line.h"

namespace tarnwick {
namespace {

constexpr const char* kInterpolated = "Interpolated";
constexpr int kModelSamples = 2000;  // between which it is taken to cross a level once at most

/// The points and the values that a regression gives a curve by; nothing without a regression.
const PointChain* RegressionPoints(const TSeries& series) {
  if (series.RegressionType() == RegressionType::None || !series.Regression().failure.empty())
    return nullptr;
  return HasRegressionCurve(series.RegressionType()) ? &series.Regression().curve
                                                     : &series.Points();
}

/// The model, ready to be asked; null without one that can be compiled.
std::unique_ptr<TCurFit> ModelOf(const TSeries& series) {
  if (series.Fit().Settings().Expression.empty()) return nullptr;
  auto model = std::make_unique<TCurFit>();
  try {
    Assign(*model, series.Fit());
    model->Prepare();
  } catch (const Error&) {
    return nullptr;  // its own window tells why
  }
  return model;
}

/// The fit that the model's present values came from; null without one that tells errors.
const FitStatistics* StatisticsOf(const TSeries& series) {
  const FitResult* result = series.Fit().Result().get();
  const bool known = result && !Failed(result->outcome.why) && HasErrors(result->statistics);
  return known ? &result->statistics : nullptr;
}

double ErrorBetween(const TSeries& series, const Between& between) {
  const double left = YErrorAt(series, between.left) * (1 - between.share);
  const double right = YErrorAt(series, between.right) * between.share;
  return between.share == 0 ? left : std::hypot(left, right);
}

/// What goes into the values between points at `x`: one, or several where the line turns back.
std::vector<Between> PassesAt(const TSeries& series, double x) {
  const LineWay way = WayToCompute(series);
  if (!way.order.empty()) return PassesOfX(series.Points(), way, x, kMostCrossings);
  const Interpolation curve(series.Points());
  const std::optional<Between> between = curve.At(x) ? curve.Around(x) : std::nullopt;
  return between ? std::vector{*between} : std::vector<Between>();
}

/// Where `f`, of opposite signs at the ends, changes its sign.
double Bisect(const std::function<double(double)>& f, double from, double to) {
  const bool rises = f(from) < 0;
  for (;;) {
    const double middle = from + (to - from) / 2;
    if (!(middle > from && middle < to)) return middle;
    ((f(middle) < 0) == rises ? from : to) = middle;
  }
}

void AddModelCrossings(const TSeries& series, double y, std::vector<Evaluated>& found) {
  const std::unique_ptr<TCurFit> model = ModelOf(series);
  if (!model) return;
  const FitStatistics* statistics = StatisticsOf(series);
  const std::function<double(double)> above = [&](double x) { return model->Value(x) - y; };
  const Extremes extremes = series.GetExtremes();
  const double step = (extremes.x_max - extremes.x_min) / kModelSamples;
  if (!(step > 0)) return;
  double last = above(extremes.x_min);
  for (int i = 1; i <= kModelSamples; ++i) {
    const double from = extremes.x_min + (i - 1) * step;
    const double to = extremes.x_min + i * step;
    const double now = above(to);
    if (last * now < 0 || now == 0) {
      const double x = now == 0 ? to : Bisect(above, from, to);
      const double slope = (above(x + step / 100) - above(x - step / 100)) / (step / 50);
      const double error =
          statistics ? CurveDeviation(*model, *statistics, x) / std::abs(slope) : kUndefined;
      found.push_back({"Model", x, y, error});
    }
    last = now;
  }
}

}  // namespace

std::vector<Evaluated> EvaluateAt(const TSeries& series, double x) {
  std::vector<Evaluated> found;
  const BaseLine line = series.GetBaseLine();
  const PointChain& points = series.Points();
  if (const std::optional<std::size_t> nearest = NearestIndex(points, x)) {
    const Point point = points.At(*nearest);
    found.push_back(
        {"Nearest point", point.x, line.CorrectedY(point.x, point.y), YErrorAt(series, point)});
  }
  for (const Between& between : PassesAt(series, x)) {
    const double y = between.left.y + between.share * (between.right.y - between.left.y);
    if (IsUndefined(y)) continue;
    found.push_back({kInterpolated, x, line.CorrectedY(x, y), ErrorBetween(series, between)});
  }
  if (const PointChain* regression = RegressionPoints(series)) {
    const std::optional<double> y = Interpolation(*regression, PointValue::Regression).At(x);
    if (y) found.push_back({"Regression", x, line.CorrectedY(x, *y)});
  }
  if (const std::unique_ptr<TCurFit> model = ModelOf(series)) {
    const FitStatistics* statistics = StatisticsOf(series);
    found.push_back({"Model", x, model->Value(x),
                     statistics ? CurveDeviation(*model, *statistics, x) : kUndefined});
  }
  return found;
}

std::string PassesText(const TSeries& series, double x, const std::vector<Evaluated>& found) {
  const auto passes = std::ranges::count(found, kInterpolated, &Evaluated::by);
  if (passes < 2) return {};
  return "The line of DataSet \"" + series.SeriesName() +
         "\" turns back and passes X = " + ShortestText(x) + ' ' + std::to_string(passes) +
         " times.";
}

std::vector<Evaluated> FindXWhere(const TSeries& series, double y) {
  std::vector<Evaluated> found;
  const BaseLine line = series.GetBaseLine();
  const Level level{y, line.offset, line.slope};
  const LineWay way = WayToCompute(series);
  const std::vector<double> passes =
      way.order.empty() ? CrossingsOf(series.Points(), PointValue::Y, level, kMostCrossings)
                        : PassesOfY(series.Points(), way, level, kMostCrossings);
  std::ranges::transform(passes, std::back_inserter(found), [y](double x) {
    return Evaluated{kInterpolated, x, y};
  });
  if (const PointChain* regression = RegressionPoints(series)) {
    for (const double x : CrossingsOf(*regression, PointValue::Regression, level, kMostCrossings))
      found.push_back({"Regression", x, y});
  }
  AddModelCrossings(series, y, found);
  return found;
}

}  // namespace tarnwick
