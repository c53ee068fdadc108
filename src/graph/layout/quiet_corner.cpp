#include "graph/layout/quiet_corner.h"

#include <QLineF>
#include <algorithm>
#include <optional>

#include "graph/layout/plot_layout.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::size_t kSampledPoints = 400;  // looked at per DataSet

/// Places on the way between two points, dense enough to be seen in a legend's box.
void AddLine(QPointF from, QPointF to, std::vector<QPointF>& pixels) {
  constexpr double kApart = 8;
  constexpr double kLongest = 4000;  // beyond any picture that a corner is chosen for
  const double length = QLineF(from, to).length();
  if (!(length > kApart && length < kLongest)) return;
  const int parts = static_cast<int>(length / kApart);
  for (int i = 1; i < parts; ++i) pixels.push_back(from + (to - from) * i / parts);
}

}  // namespace

QuietPlace FindQuietPlace(std::span<const QRectF> places, const PictureContents& contents) {
  const auto hidden_by = [&](const QRectF& place) {
    HiddenContents hidden;
    for (const QRectF& box : contents.boxes) hidden.boxes += box.intersects(place) ? 1 : 0;
    if (contents.points_in) hidden.points = contents.points_in(place);
    return hidden;
  };
  QuietPlace best{0, hidden_by(places.front())};
  for (std::size_t i = 1; i < places.size(); ++i) {
    const HiddenContents hidden = hidden_by(places[i]);
    if (hidden < best.hidden) best = {i, hidden};
  }
  return best;
}

std::vector<QRectF> CaptionBoxes(const PlotLayout& layout) {
  std::vector<QRectF> boxes;
  for (const MarkItem& mark : layout.marks) {
    if (mark.caption) boxes.push_back(mark.caption->Box());
  }
  return boxes;
}

std::vector<QRectF> ChildBoxes(const PlotLayout& layout) {
  std::vector<QRectF> boxes;
  for (const ChildFrame& child : layout.children) boxes.push_back(child.frame);
  return boxes;
}

std::vector<QPointF> SampledPixels(const TxyGraph& graph, const PlotLayout& layout) {
  std::vector<QPointF> pixels;
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    if (!IsDrawn(graph, series) || IsInPanel(series)) continue;
    const PointChain& points = series.Points();
    const std::size_t step = std::max<std::size_t>(points.Size() / kSampledPoints, 1);
    const AxisScale& y_scale = layout.Axis(YAxisOf(series)).scale;
    std::optional<QPointF> before;
    for (std::size_t at = 0; at < points.Size(); at += step) {
      const Point point = points.At(at);
      const QPointF pixel(layout.Axis(AxisId::X).scale.Position(point.x),
                          y_scale.Position(series.GetBaseLine().CorrectedY(point.x, point.y)));
      if (before && series.Style().connect_points) AddLine(*before, pixel, pixels);
      pixels.push_back(pixel);
      before = pixel;
    }
  }
  return pixels;
}

}  // namespace tarnwick
