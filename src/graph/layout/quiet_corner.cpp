#include "graph/layout/quiet_corner.h"

#include <QLineF>
#include <algorithm>
#include <optional>

#include "base/undefined.h"
#include "data/series/point_errors.h"
#include "graph/all_series.h"
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

std::vector<QRectF> BoxesToRead(const PlotLayout& layout) {
  std::vector<QRectF> boxes = CaptionBoxes(layout);
  for (const QRectF& child : ChildBoxes(layout)) boxes.push_back(child);
  for (const AxisLayout* axis : layout.ShownAxes()) {
    for (const PlacedText& label : axis->labels)
      if (layout.plot.contains(label.center)) boxes.push_back(label.Box());
  }
  return boxes;
}

std::vector<QRectF> PlacesIn(const QRectF& area, QSizeF box) {
  constexpr int kSteps = 24;  // each way
  const double across = std::max(0.0, area.width() - box.width());
  const double down = std::max(0.0, area.height() - box.height());
  const auto place = [&](int column, int row) {
    return QRectF(area.topLeft() + QPointF(across * column, down * row) / kSteps, box);
  };
  std::vector<QRectF> places = {place(kSteps, 0), place(kSteps, kSteps), place(0, kSteps),
                                place(0, 0)};
  for (int ring = 0; ring <= kSteps / 2; ++ring) {
    for (int row = ring; row <= kSteps - ring; ++row) {
      for (int column = kSteps - ring; column >= ring; --column) {
        const bool inner =
            row > ring && row < kSteps - ring && column > ring && column < kSteps - ring;
        if (!inner) places.push_back(place(column, row));
      }
    }
  }
  return places;
}

namespace {

std::size_t StepOf(const PointChain& points) {
  return std::max<std::size_t>(points.Size() / kSampledPoints, 1);
}

/// A sample of one line of points, with places on its way where they are `joined`.
void AddPixels(const PointChain& points, const std::function<QPointF(std::size_t)>& pixel_at,
               bool joined, std::vector<QPointF>& pixels) {
  const std::size_t step = StepOf(points);
  std::optional<QPointF> before;
  for (std::size_t at = 0; at < points.Size(); at += step) {
    const QPointF pixel = pixel_at(at);
    if (before && joined) AddLine(*before, pixel, pixels);
    pixels.push_back(pixel);
    before = pixel;
  }
}

/// Of the errors of a sample of the points.
void AddBars(const TSeries& series, const AxisScale& x, const AxisScale& y,
             std::vector<QPointF>& pixels) {
  if (!HasYErrors(series.Errors()) && !HasXErrors(series.Errors())) return;
  const PointChain& points = series.Points();
  const std::size_t step = StepOf(points);
  const auto add = [&](QPointF from, QPointF to) {
    pixels.insert(pixels.end(), {from, to});
    AddLine(from, to, pixels);
  };
  for (std::size_t at = 0; at < points.Size(); at += step) {
    const Point point = points.At(at);
    const double height = series.GetBaseLine().CorrectedY(point.x, point.y);
    if (const double error = YErrorAt(series, point); !IsUndefined(error)) {
      const double across = x.Position(point.x);
      add({across, y.Position(height - error)}, {across, y.Position(height + error)});
    }
    if (const double error = XErrorAt(series, point); !IsUndefined(error)) {
      const double down = y.Position(height);
      add({x.Position(point.x - error), down}, {x.Position(point.x + error), down});
    }
  }
}

}  // namespace

std::vector<QPointF> SampledPixels(const TxyGraph& graph, const PlotLayout& layout) {
  std::vector<QPointF> pixels;
  const AxisScale& x = layout.Axis(AxisId::X).scale;
  for (const TSeries& series : AllSeries(graph)) {
    if (!IsDrawn(graph, series) || IsInPanel(series)) continue;
    const AxisScale& y = layout.Axis(YAxisOf(series)).scale;
    const auto add = [&](const PointChain& points, bool joined, const auto& y_at) {
      const auto pixel_at = [&](std::size_t at) {
        return QPointF(x.Position(points.At(at).x), y.Position(y_at(at)));
      };
      AddPixels(points, pixel_at, joined, pixels);
    };
    const BaseLine& base = series.GetBaseLine();
    const PointChain& points = series.Points();
    add(points, series.Style().connect_points,
        [&](std::size_t at) { return base.CorrectedY(points.At(at).x, points.At(at).y); });
    AddBars(series, x, y, pixels);
    if (series.RegressionType() != RegressionType::None && !series.Regression().stale) {
      const PointChain& fitted =
          HasRegressionCurve(series.RegressionType()) ? series.Regression().curve : points;
      add(fitted, true, [&](std::size_t at) {
        return base.CorrectedY(fitted.At(at).x, fitted.At(at).regression);
      });
    }
    const PointChain& curve = series.Curve().Points();
    add(curve, true, [&](std::size_t at) { return curve.At(at).y; });
  }
  return pixels;
}

}  // namespace tarnwick
