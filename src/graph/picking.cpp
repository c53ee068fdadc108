#include "graph/picking.h"

#include <cmath>

#include "graph/xy_graph.h"

namespace tarnwick {

bool IsShownThroughCurve(const TSeries& series) {
  const SeriesStyle& style = series.Style();
  return HasRegressionCurve(series.RegressionType()) && !series.RegressionCurve().Empty() &&
         !style.connect_points && !style.show_symbols;
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
  const bool on_curve = IsShownThroughCurve(series);
  const PointChain& points = on_curve ? series.RegressionCurve() : series.Points();
  const std::optional<std::size_t> index = NearestIndex(points, x);
  if (!index) return std::nullopt;
  const Point point = points.At(*index);
  if (on_curve)
    return PickedPoint{static_cast<std::int32_t>(*index) + 1, point.x, point.regression, true};
  return PickedPoint{point.id, point.x, series.CorrectedY(point.x, point.y), false};
}

std::optional<PickedPoint> PickPoint(const TxyGraph& graph, double x) {
  const TSeries* series = graph.CurrentSeries();
  return series == nullptr ? std::nullopt : PickPointOf(graph, *series, x);
}

}  // namespace tarnwick
