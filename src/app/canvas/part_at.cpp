#include "app/canvas/part_at.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "app/canvas/picture_object.h"
#include "graph/picking.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

using Kind = GraphPart::Kind;

constexpr double kReach = 5;                 // pixels
constexpr std::size_t kMostLookedAt = 4096;  // points of a DataSet near the place

double DistanceTo(QPointF from, QPointF to, QPointF place) {
  const QPointF along = to - from;
  const double length = QPointF::dotProduct(along, along);
  const double share =
      length > 0 ? std::clamp(QPointF::dotProduct(place - from, along) / length, 0.0, 1.0) : 0;
  const QPointF way = place - (from + share * along);
  return std::hypot(way.x(), way.y());
}

/// From a place to what is drawn of a DataSet around it: its line, or its points where there is none.
double DistanceToCurve(const PlotLayout& layout, const TSeries& series, QPointF place) {
  const AxisScale& x = layout.Axis(AxisId::X).scale;
  const AxisScale& y = layout.YScaleOf(series);
  const PointChain& points = PickablePoints(series);
  const bool joined = series.Style().connect_points || IsShownThroughCurve(series);
  const std::size_t first = points.LowerBound(x.ValueAt(place.x() - kReach));
  const std::size_t last =
      std::min(points.LowerBound(x.ValueAt(place.x() + kReach)) + 1, points.Size());
  const std::size_t begin = first > 0 ? first - 1 : 0;
  const std::size_t stride = std::max<std::size_t>(1, (last - begin) / kMostLookedAt);
  double nearest = INFINITY;
  std::optional<QPointF> before;
  for (std::size_t i = begin; i < last; i += stride) {
    const PickedPoint point = PickedPointAt(series, i);
    const QPointF drawn(x.Position(point.x), y.Position(point.y));
    const double distance = DistanceTo(joined && before ? *before : drawn, drawn, place);
    nearest = std::fmin(nearest, distance);
    before = drawn;
  }
  return nearest;
}

std::optional<GraphPart> CurveAt(const TxyGraph& graph, const PlotLayout& layout, QPointF place) {
  double nearest = kReach;
  std::optional<GraphPart> found;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!IsDrawn(graph, series) || !layout.PlotOf(series).contains(place)) continue;
    const double distance = DistanceToCurve(layout, series, place);
    if (!(distance <= nearest)) continue;
    nearest = distance;
    found = GraphPart{Kind::DataSet, static_cast<std::int32_t>(i)};
  }
  return found;
}

bool Contains(const std::optional<PlacedText>& text, QPointF place) {
  return text && text->Box().contains(place);
}

/// The axis' line, and the strip that its ticks and labels take.
bool IsMet(const AxisLayout& axis, QPointF place) {
  if (!axis.shown) return false;
  QRectF strip = QRectF(axis.line.p1(), axis.line.p2()).normalized();
  strip.adjust(-kReach, -kReach, kReach, kReach);
  for (const PlacedText& label : axis.labels) strip |= label.Box();
  return strip.contains(place) || Contains(axis.factor, place) || Contains(axis.title, place);
}

}  // namespace

GraphPart PartAt(const TxyGraph& graph, const PlotLayout& layout, QPointF place) {
  if (const auto object = ObjectAt(layout, place)) {
    return object->IsOfMark() ? GraphPart{Kind::Mark, object->id} : GraphPart{Kind::Legend};
  }
  if (Contains(layout.title, place)) return {Kind::Title};
  if (layout.has_scales) {
    if (const auto curve = CurveAt(graph, layout, place)) return *curve;
  }
  for (const AxisId axis : {AxisId::X, AxisId::Y, AxisId::Y2}) {
    if (IsMet(layout.Axis(axis), place)) return PartOf(axis);
  }
  return {};
}

}  // namespace tarnwick
