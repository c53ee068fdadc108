#include "analysis/fits/fit_job.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/undefined.h"
#include "data/import/whole_data.h"
#include "data/regression/regression_type.h"
#include "data/series/point_errors.h"

namespace tarnwick {
namespace {

struct Range {
  std::size_t first = 0;
  std::size_t end = 0;
};

/// Comparing with an undefined margin is never true: such a left margin lets no point in, such a right one stops none.
Range PointsInMargins(const PointChain& points, const FitSettings& settings) {
  Range range{0, points.Size()};
  if (settings.LeftMarginUsed) {
    range.first =
        IsUndefined(settings.LeftMargin) ? points.Size() : points.LowerBound(settings.LeftMargin);
  }
  if (settings.RightMarginUsed && !IsUndefined(settings.RightMargin))
    range.end = points.LowerBound(settings.RightMargin);
  range.first = std::min(range.first, range.end);
  return range;
}

/// How many points are passed over after each that is used.
std::size_t SkipCount(std::size_t in_range, const FitSettings& settings, FitPointChoice choice) {
  if (choice == FitPointChoice::All || settings.NPoints <= 0) return 0;
  return (in_range + 1) / static_cast<std::size_t>(settings.NPoints);
}

/// The DataSet's curve where its regression has one, computed when it is stale.
PointChain CurveInPlaceOfPoints(const TDataSeries& series) {
  if (!HasRegressionCurve(series.RegressionType())) return {};
  if (!series.Regression().stale) return series.Regression().curve;
  TDataSeries copy;  // shares the points
  copy.SetState(series.State());
  copy.UpdateRegression();
  return copy.Regression().curve;
}

/// True when the points' own errors shall weigh them, as far as there are some.
bool WeighsByErrors(const TDataSeries& series, const FitJob& job) {
  const FitWeights weights = job.settings.weighting.weights;
  return (weights == FitWeights::Automatic || weights == FitWeights::Errors) &&
         job.source == FitPointSource::Points && HasYErrors(series.Errors());
}

/// Calls visit(point, corrected Y) for every `step`th point of the range that has a finite one.
template <class Visit>
void ForEachPoint(const PointChain& points, const Range& range, std::size_t step,
                  const TDataSeries& series, Visit&& visit) {
  if (range.first == range.end) return;
  const double offset = series.ZeroValue();
  const double slope = series.BaseLineSlope();
  std::size_t next = range.first;
  for (std::size_t number = points.ChunkOfIndex(next); next < range.end; ++number) {
    const ChunkView chunk = points.Chunk(number);
    const std::size_t end = std::min(range.end, chunk.first_index + chunk.x.size());
    for (; next < end; next += step) {
      const std::size_t i = next - chunk.first_index;
      // An infinite X has a corrected Y too, as long as the base line is level.
      const double above = chunk.y[i] - offset;
      const double y = slope == 0 ? above : above - slope * chunk.x[i];
      if (std::isfinite(y)) visit(Point{chunk.chunk->Id(i), chunk.x[i], chunk.y[i]}, y);
    }
  }
}

void AddPoints(const PointChain& points, const Range& range, std::size_t step,
               const TDataSeries& series, FitJob& job) {
  const bool weighed = WeighsByErrors(series, job);
  ForEachPoint(points, range, step, series, [&](const Point& point, double y) {
    if (weighed) {
      const double error = YErrorOf(series.Errors(), point);
      if (!(error > 0) || !std::isfinite(1 / error)) {
        ++job.points_without_error;
        return;
      }
      job.errors.push_back(error);
    }
    job.x.push_back(point.x);
    job.y.push_back(y);
  });
}

}  // namespace

FitJob PrepareFit(const TDataSeries& series, const FitRunOptions& options) {
  FitJob job;
  job.settings = series.Fit().Settings();
  job.options = options;
  const PointChain curve = CurveInPlaceOfPoints(series);
  if (!curve.Empty()) job.source = FitPointSource::RegressionCurve;
  const PointChain& points = curve.Empty() ? series.Points() : curve;
  job.has_x_errors = curve.Empty() && HasXErrors(series.Errors());
  job.some_rows = SomeRowsText(series.Source());

  const Range range = PointsInMargins(points, job.settings);
  const std::size_t in_range = range.end - range.first;
  const std::size_t step = SkipCount(in_range, job.settings, options.points) + 1;
  job.points_in_range = static_cast<std::int64_t>(in_range);
  job.points_chosen = static_cast<std::int64_t>((in_range + step - 1) / step);
  job.x.reserve(static_cast<std::size_t>(job.points_chosen));
  job.y.reserve(static_cast<std::size_t>(job.points_chosen));

  AddPoints(points, range, step, series, job);
  return job;
}

FitPointSource ForEachFitPoint(const TDataSeries& series, const FitPointVisitor& visit) {
  const PointChain curve = CurveInPlaceOfPoints(series);
  const PointChain& points = curve.Empty() ? series.Points() : curve;
  ForEachPoint(points, PointsInMargins(points, series.Fit().Settings()), 1, series, visit);
  return curve.Empty() ? FitPointSource::Points : FitPointSource::RegressionCurve;
}

}  // namespace tarnwick
