#include "results/residual_band.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "graph/axes/nice_step.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

/// The band's part of the plot's height.
constexpr double kBand = 0.25;
/// Points that a band may share its place with, as a share of all.
constexpr double kStrays = 0.03;
/// Points looked at per DataSet.
constexpr std::size_t kSampledPoints = 2000;

/// Shares of the points that lie in the lowest and the highest band of the first Y axis.
struct Crowd {
  double low = 0;
  double high = 0;
};

/// How far up the axis, from 0 to 1.
double HeightOn(const TAxis& axis, double value) {
  if (axis.LogScale()) {
    return std::log(value / axis.Min()) / std::log(axis.Max() / axis.Min());
  }
  return (value - axis.Min()) / (axis.Max() - axis.Min());
}

Crowd CrowdIn(const TxyGraph& graph) {
  const TAxis& axis = graph.Axis(AxisId::Y);
  std::size_t all = 0;
  Crowd crowd;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!IsDrawn(graph, series) || YAxisOf(series) != AxisId::Y) continue;
    const PointChain& points = series.Points();
    const std::size_t step = std::max<std::size_t>(points.Size() / kSampledPoints, 1);
    for (std::size_t at = 0; at < points.Size(); at += step, ++all) {
      const Point point = points.At(at);
      const double height = HeightOn(axis, series.GetBaseLine().CorrectedY(point.x, point.y));
      crowd.low += height < kBand ? 1 : 0;
      crowd.high += height > 1 - kBand ? 1 : 0;
    }
  }
  if (all == 0) return {};
  return {crowd.low / static_cast<double>(all), crowd.high / static_cast<double>(all)};
}

/// Lengthens the axis downward by the band's height.
void MakeRoomBelow(TAxis& axis) {
  constexpr double kLonger = kBand / (1 - kBand);
  if (axis.LogScale()) {
    axis.SetMin(axis.Min() * std::pow(axis.Min() / axis.Max(), kLonger));
    return;
  }
  const double wanted = axis.Min() - kLonger * (axis.Max() - axis.Min());
  const double step = axis.StepSize();
  axis.SetMin(step > 0 ? StepGrid(step).At(std::floor(wanted / step)) : wanted);
}

bool SharesSecondAxis(const TxyGraph& graph, const TSeries& residuals) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (&series == &residuals || series.PointCount() == 0 || !IsDrawn(graph, series)) continue;
    if (YAxisOf(series) == AxisId::Y2) return true;
  }
  return false;
}

/// 1, 2 or 5 times a power of ten that is not less.
double RoundUp(double value) {
  const DecimalSplit split = SplitDecimal(value);
  for (const int mantissa : {1, 2, 5}) {
    if (mantissa >= split.mantissa) return ScaledByTen(mantissa, split.exponent);
  }
  return ScaledByTen(1, split.exponent + 1);
}

}  // namespace

void GiveResidualsABand(TxyGraph& graph, const TSeries& residuals) {
  const Extremes extremes = residuals.GetExtremes();
  const double largest = std::max(std::abs(extremes.y_min), std::abs(extremes.y_max));
  TAxis& second = graph.Axis(AxisId::Y2);
  if (!(largest > 0) || second.LogScale() || SharesSecondAxis(graph, residuals)) return;
  const Crowd crowd = CrowdIn(graph);
  const bool above = crowd.low > kStrays && crowd.high <= kStrays;
  if (crowd.low > kStrays && !above) MakeRoomBelow(graph.Axis(AxisId::Y));
  const double half = RoundUp(largest);
  const double beyond = 2 * half / kBand - half;
  second.SetMin(above ? -beyond : -half);
  second.SetMax(above ? half : beyond);
  second.SetStepSize(half);
  second.SetAdjustDecPlaces(true);
}

}  // namespace tarnwick
