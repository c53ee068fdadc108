#include "graph/layout/plot_layout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include <QTransform>

#include "graph/background_image.h"
#include "graph/layout/plot_layout_parts.h"
#include "graph/panel_axis.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::array kAxisIds = {AxisId::X, AxisId::Y, AxisId::Y2};

/// Deepest nesting of inserted graphs that is drawn.
constexpr int kDeepestChild = 8;

/// Between the margins, the panel's place with it.
QRectF RoomRect(const TxyGraph& graph, QSizeF size) {
  const double taken_x = graph.ClientWidth() - graph.PixelLength(AxisId::X);
  const double taken_y = graph.ClientHeight() - graph.HeightWithPanel();
  return {static_cast<double>(graph.PixelOrigin(AxisId::X)),
          static_cast<double>(graph.PixelOrigin(AxisId::Y)), size.width() - taken_x,
          size.height() - taken_y};
}

QRectF PlotRect(const TxyGraph& graph, QSizeF size) {
  QRectF plot = RoomRect(graph, size);
  if (HasPanel(graph)) plot.setHeight(PlaceOfPanel(plot.height()).plot_end);
  return plot;
}

/// The panel and its scale.
std::optional<PanelLayout> PanelAt(const TxyGraph& graph, QSizeF size) {
  if (!HasPanel(graph)) return std::nullopt;
  PanelLayout panel;
  panel.plot = RoomRect(graph, size);
  panel.plot.adjust(0, PlaceOfPanel(panel.plot.height()).panel_begin, 0, 0);
  if (panel.plot.height() < 1) return std::nullopt;
  panel.y.scale = ScaleOf(graph.PanelAxis(), AxisId::Y, panel.plot.top(),
                          PixelsPerUnit(graph.PanelAxis(), panel.plot.height()));
  return panel;
}

bool AllDrawable(const TxyGraph& graph) {
  return std::all_of(kAxisIds.begin(), kAxisIds.end(),
                     [&](AxisId id) { return IsDrawable(graph.Axis(id).State()); });
}

/// Stretched over the plot, or in its own size in the plot's middle.
void LayoutBackground(const TxyGraph& graph, PlotLayout& layout) {
  const QImage& image = graph.Background().Image();
  if (image.isNull()) return;
  PlacedImage placed{image, layout.plot, QRectF(image.rect())};
  if (!graph.GetAppearance().stretch_background) {
    QRectF whole = placed.source;
    whole.moveCenter(layout.plot.center());
    placed.target = whole.intersected(layout.plot);
    placed.source = placed.target.translated(-whole.topLeft());
  }
  layout.background = placed;
}

void LayoutMessage(const LayoutContext& context, const char* text, PlotLayout& layout) {
  const Font& font = context.graph.GetAppearance().font_for_axes_titles;
  const QString fitted =
      context.metrics.Elided(QString::fromUtf8(text), font, layout.plot.width() - 8);
  PlacedText message = MakeText({fitted, {}}, font, context.metrics);
  message.center = layout.plot.center();
  if (layout.plot.contains(message.Box()) && context.room.IsInside(message)) {
    context.room.Take(message);
    layout.message = message;
  }
}

void LayoutCross(const TxyGraph& graph, PlotLayout& layout) {
  const AxisState& x = graph.Axis(AxisId::X).State();
  const AxisState& y = graph.Axis(AxisId::Y).State();
  if (!graph.GetAppearance().show_cross_at_zero || x.LogScale || y.LogScale) return;
  const QPointF zero(layout.Axis(AxisId::X).scale.Position(0),
                     layout.Axis(AxisId::Y).scale.Position(0));
  if (layout.plot.contains(zero)) layout.cross = zero;
}

PlotLayout LayoutAtDepth(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics, int depth);

void LayoutChildren(const TxyGraph& graph, const TextMetrics& metrics, int depth,
                    PlotLayout& layout) {
  if (depth >= kDeepestChild) return;
  for (std::size_t i = 0; i < graph.Children().size(); ++i) {
    const TxyChildGr& child = *graph.Children()[i];
    const TxyChildGr::Place place =
        child.PlaceIn(qRound(layout.size.width()), qRound(layout.size.height()));
    const QRectF frame(place.left, place.top, place.width, place.height);
    layout.children.push_back({i, frame, LayoutAtDepth(child, frame.size(), metrics, depth + 1)});
  }
}

PlotLayout LayoutAtDepth(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics,
                         int depth) {
  PlotLayout layout;
  layout.size = size;
  layout.plot = PlotRect(graph, size);
  if (layout.plot.width() < 1 || layout.plot.height() < 1) {
    layout.plot = QRectF();
    return layout;
  }
  LayoutBackground(graph, layout);
  TextRoom room(size);
  const LayoutContext context = {graph, metrics, room};
  if (!graph.ScaleError().empty() || !AllDrawable(graph)) {
    LayoutMessage(context, kScaleErrorCaption, layout);
    return layout;
  }
  for (const AxisId id : kAxisIds) {
    layout.axes[static_cast<std::size_t>(id)].scale = ScaleAt(graph, id, size);
  }
  layout.has_scales = true;
  layout.panel = PanelAt(graph, size);
  for (const AxisId id : kAxisIds) LayoutAxis(context, id, layout);
  if (layout.panel) LayoutPanelAxis(context, layout);
  KeepGridOffLabels(layout);
  LayoutTitles(context, layout);
  if (!HasPoints(graph) && graph.Children().empty()) {
    LayoutMessage(context, kWaitingCaption, layout);
  }
  LayoutCross(graph, layout);
  LayoutLegend(context, layout);
  LayoutMarks(context, layout);
  LayoutChildren(graph, metrics, depth, layout);
  return layout;
}

}  // namespace

QPolygonF PlacedText::Ink() const {
  constexpr double kLetters = 0.8;
  PlacedText letters = *this;
  letters.size.rheight() *= kLetters;
  return letters.Outline();
}

QPolygonF PlacedText::Outline() const {
  const QRectF box(-size.width() / 2, -size.height() / 2, size.width(), size.height());
  return QTransform().translate(center.x(), center.y()).rotate(-angle).map(QPolygonF(box));
}

std::vector<const AxisLayout*> PlotLayout::ShownAxes() const {
  std::vector<const AxisLayout*> shown;
  for (const AxisLayout& axis : axes) {
    if (axis.shown) shown.push_back(&axis);
  }
  if (panel && panel->y.shown) shown.push_back(&panel->y);
  return shown;
}

const QRectF& PlotLayout::PlotOf(const TSeries& series) const {
  return panel && IsInPanel(series) ? panel->plot : plot;
}

const AxisScale& PlotLayout::YScaleOf(const TSeries& series) const {
  return panel && IsInPanel(series) ? panel->y.scale : Axis(YAxisOf(series)).scale;
}

bool Overlap(const QPolygonF& left, const QPolygonF& right) {
  if (!left.boundingRect().intersects(right.boundingRect())) return false;
  // Separating axes: two convex outlines are apart exactly when an edge of one of them has all of the other outside.
  const auto separates = [](const QPolygonF& edges, const QPolygonF& a, const QPolygonF& b) {
    for (qsizetype i = 0; i + 1 < edges.size(); ++i) {
      const QPointF normal(edges[i + 1].y() - edges[i].y(), edges[i].x() - edges[i + 1].x());
      const auto span = [&](const QPolygonF& polygon) {
        std::array<double, 2> range = {INFINITY, -INFINITY};
        for (const QPointF& point : polygon) {
          const double along = QPointF::dotProduct(point, normal);
          range = {std::min(range[0], along), std::max(range[1], along)};
        }
        return range;
      };
      const auto first = span(a);
      const auto second = span(b);
      if (first[1] <= second[0] || second[1] <= first[0]) return true;
    }
    return false;
  };
  return !separates(left, left, right) && !separates(right, left, right);
}

bool TextRoom::IsInside(const PlacedText& text) const {
  // Half a pixel of a glyph's side bearing is no text.
  return picture_.adjusted(-0.5, -0.5, 0.5, 0.5).contains(text.Box());
}

bool TextRoom::IsFree(const PlacedText& text) const {
  if (!IsInside(text)) return false;
  const QPolygonF outline = text.Ink();
  return std::none_of(taken_.begin(), taken_.end(),
                      [&](const QPolygonF& other) { return Overlap(outline, other); });
}

bool TextRoom::IsFree(const QRectF& box) const {
  const QPolygonF outline(box);
  return std::none_of(taken_.begin(), taken_.end(),
                      [&](const QPolygonF& other) { return Overlap(outline, other); });
}

bool TextRoom::TryTake(const PlacedText& text) {
  if (!IsFree(text)) return false;
  Take(text);
  return true;
}

PlacedText MakeText(const RichText& text, const Font& font, const TextMetrics& metrics) {
  PlacedText placed;
  placed.text = text;
  placed.font = font;
  placed.size = metrics.SizeOf(text, font);
  return placed;
}

AxisScale ScaleAt(const TxyGraph& graph, AxisId axis, QSizeF size) {
  const QRectF plot = PlotRect(graph, size);
  const AxisState& state = graph.Axis(axis).State();
  const bool across = axis == AxisId::X;
  return ScaleOf(state, axis, across ? plot.left() : plot.top(),
                 PixelsPerUnit(state, across ? plot.width() : plot.height()));
}

PlotLayout LayoutPlot(const TxyGraph& graph, QSizeF size, const TextMetrics& metrics) {
  return LayoutAtDepth(graph, size, metrics, 0);
}

}  // namespace tarnwick
