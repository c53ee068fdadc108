#include "graph/picking.h"

#include <cmath>

#include "graph/xy_graph.h"

namespace tarnwick {

bool IsShownThroughCurve(const TSeries& series) {
  const SeriesStyle& style = series.Style();
  return HasRegressionCurve(series.RegressionType()) && !series.Regression().curve.Empty() &&
         !style.connect_points && !style.show_symbols;
}

const PointChain& PickablePoints(const TSeries& series) {
  return IsShownThroughCurve(series) ? series.Regression().curve : series.Points();
}

PickedPoint PickedPointAt(const TSeries& series, std::size_t index) {
  const Point point = PickablePoints(series).At(index);
  if (IsShownThroughCurve(series)) {
    return {static_cast<std::int32_t>(index) + 1, point.x, point.regression, true};
  }
  return {point.id,
          point.x,
          series.GetBaseLine().CorrectedY(point.x, point.y),
          false,
          YErrorAt(series, point),
          XErrorAt(series, point)};
}

std::optional<std::size_t> NearestIndex(const PointChain& points, double x) {
  if (points.Empty() || std::isnan(x)) return std::nullopt;
  const std::size_t found = points.LowerBound(x);
  if (found == 0) return 0;
  if (found == points.Size()) return points.Size() - 1;
  const double right = points.At(found).x;
  if (x == right) return found;
  const double left = points.At(found - 1).x;
  // Halves first: the sum of two huge abscissae would overflow.
  const double middle = right / 2 + left / 2;
  return middle >= x ? found - 1 : found;
}

std::optional<PickedPoint> PickPointOf(const TxyGraph& graph, const TSeries& series, double x) {
  const TAxis& axis = graph.Axis(AxisId::X);
  if (!(x >= axis.Min() && x <= axis.Max())) return std::nullopt;
  const std::optional<std::size_t> index = NearestIndex(PickablePoints(series), x);
  if (!index) return std::nullopt;
  return PickedPointAt(series, *index);
}

std::optional<PickedPoint> PickPoint(const TxyGraph& graph, double x) {
  const TSeries* series = graph.CurrentSeries();
  return series == nullptr ? std::nullopt : PickPointOf(graph, *series, x);
}

}  // namespace tarnwick
