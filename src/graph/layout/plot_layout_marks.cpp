#include <algorithm>
#include <array>
#include <cmath>

#include "graph/layout/plot_layout_parts.h"
#include "graph/thinning/line_clip.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr double kGap = 4;
constexpr double kSmallestRadius = 2;
constexpr double kLargestRadius = 100;
constexpr double kDefaultWidth = 8;
constexpr double kHeadLength = 11;
constexpr double kHeadWidth = 8;
// What of a rectangle lies outside the plot is cut off so far from it: its frame is drawn whole.
constexpr double kBeyond = 8;

/// Half the stored width ("Point Width", pixels).
double RadiusOf(const Mark& mark) {
  const double width = std::isfinite(mark.x2) && mark.x2 > 0 ? mark.x2 : kDefaultWidth;
  return std::clamp(width / 2, kSmallestRadius, kLargestRadius);
}

bool IsFinite(const QPointF& point) {
  return std::isfinite(point.x()) && std::isfinite(point.y());
}

/// Geometry of a mark; false when nothing of it can be seen.
bool PlaceMark(const QRectF& plot, const AxisScale& x, const AxisScale& y, MarkItem& item) {
  const Mark& mark = item.mark;
  const QPointF first(x.Position(mark.x1), y.Position(mark.y1));
  const auto within = [](double value, double low, double high) {
    return value >= low && value <= high;
  };
  switch (mark.type) {
    case MarkType::Vertical:
      item.line = {first.x(), plot.bottom(), first.x(), plot.top()};
      return within(first.x(), plot.left(), plot.right());
    case MarkType::Horizontal:
      item.line = {plot.left(), first.y(), plot.right(), first.y()};
      return within(first.y(), plot.top(), plot.bottom());
    case MarkType::Point:
      item.radius = RadiusOf(mark);
      [[fallthrough]];
    case MarkType::Text:
      item.point = first;
      // A rectangle holds even what is no number.
      return IsFinite(first) && plot.contains(first);
    case MarkType::Line:
    case MarkType::Arrow:
    case MarkType::Rectangle:
      item.line = {first, QPointF(x.Position(mark.x2), y.Position(mark.y2))};
      return IsFinite(item.line.p1()) && IsFinite(item.line.p2());
  }
  return false;
}

/// The part of a segment inside the plot; a segment without extent is a place for a caption.
std::optional<QLineF> Clipped(const QLineF& line, const QRectF& plot) {
  if (line.isNull()) return plot.contains(line.p1()) ? std::optional(line) : std::nullopt;
  const std::array<PixelPoint, 2> ends = {{{line.x1(), line.y1()}, {line.x2(), line.y2()}}};
  const std::vector<QPolygonF> pieces = ClipPolyline(ends, plot);
  if (pieces.empty() || pieces.front().size() < 2) return std::nullopt;
  return QLineF(pieces.front().front(), pieces.front().back());
}

/// Cuts a mark with two ends to what can be seen; false when that is nothing.
bool CutToPlot(const QRectF& plot, MarkItem& item) {
  if (item.mark.type == MarkType::Rectangle) {
    const QRectF whole = QRectF(item.line.p1(), item.line.p2()).normalized();
    item.box = whole & plot.adjusted(-kBeyond, -kBeyond, kBeyond, kBeyond);
    const QLineF edges[] = {{whole.topLeft(), whole.topRight()},
                            {whole.topRight(), whole.bottomRight()},
                            {whole.bottomRight(), whole.bottomLeft()},
                            {whole.bottomLeft(), whole.topLeft()}};
    for (const QLineF& edge : edges) {
      if (edge.isNull() && !item.line.isNull()) continue;  // it has no width or no height
      if (const auto seen = Clipped(edge, plot)) item.lines.push_back(*seen);
    }
    return !item.lines.empty();
  }
  const std::optional<QLineF> seen = Clipped(item.line, plot);
  if (seen) item.line = *seen;
  return seen.has_value();
}

/// True for a line so short, or without extent, that it stands before its caption as a sample does in a legend.
bool IsDash(const MarkItem& item, QSizeF caption) {
  constexpr double kLongest = 2;  // heights of the caption
  return item.mark.type == MarkType::Line &&
         std::abs(item.line.dx()) <= kLongest * caption.height() &&
         std::abs(item.line.dy()) <= caption.height() / 2;
}

/// Places worth trying for a caption of `size`, the best first.
std::vector<QPointF> CaptionPlaces(const MarkItem& item, const QRectF& plot, QSizeF size) {
  constexpr int kRows = 12;
  const double half_width = size.width() / 2;
  const double half_height = size.height() / 2;
  std::vector<QPointF> places;
  const auto add = [&](double x, double y) { places.emplace_back(x, y); };
  if (item.mark.type == MarkType::Vertical) {
    for (int row = 0; row < kRows; ++row) {
      const double y = plot.top() + kGap + half_height + row * size.height();
      add(item.line.x1() + kGap + half_width, y);
      add(item.line.x1() - kGap - half_width, y);
    }
  } else if (item.mark.type == MarkType::Rectangle) {
    for (const double edge : {item.box.top(), item.box.bottom()}) {
      for (const double away : {-1.0, 1.0}) {
        const double up = edge == item.box.top() ? away : -away;
        add(item.box.center().x(), edge + up * (1 + half_height));
      }
    }
  } else if (item.mark.type == MarkType::Text) {
    const double left = std::min(item.point.x(), plot.right() - size.width());
    const double top = std::clamp(item.point.y() - half_height, plot.top(),
                                  std::max(plot.top(), plot.bottom() - size.height()));
    add(std::max(left, plot.left()) + half_width, top + half_height);
  } else if (item.mark.type == MarkType::Horizontal) {
    for (int column = 0; column < kRows; ++column) {
      const double x = plot.right() - kGap - half_width - column * (size.width() + kGap);
      add(x, item.line.y1() - 1 - half_height);
      add(x, item.line.y1() + 1 + half_height);
    }
  } else {
    if (IsDash(item, size)) {
      const double right = std::max(item.line.x1(), item.line.x2());
      add(right + kGap + half_width, item.line.center().y());
    }
    const bool is_arrow = item.mark.type == MarkType::Arrow;  // points away from its caption
    const QPointF middle = is_arrow ? item.line.p1() : item.line.center();
    const QPointF anchor = item.mark.type == MarkType::Point ? item.point : middle;
    const double away = item.radius + kGap;
    for (const double sideways : {1.0, -1.0}) {
      for (const double up : {-1.0, 1.0, 0.0}) {
        add(anchor.x() + sideways * (away + half_width),
            anchor.y() + up * (item.radius + half_height));
      }
    }
    add(anchor.x(), anchor.y() - away - half_height);
    add(anchor.x(), anchor.y() + away + half_height);
  }
  return places;
}

/// True when a mark would strike the text through.
bool IsStruckOut(const QRectF& box, const std::vector<MarkItem>& marks) {
  return std::any_of(marks.begin(), marks.end(), [&](const MarkItem& item) {
    if (item.mark.type == MarkType::Point) {
      return box.intersects(QRectF(item.point, QSizeF())
                                .adjusted(-item.radius, -item.radius, item.radius, item.radius));
    }
    return std::ranges::any_of(item.lines, [&](const QLineF& line) {
      return Clipped(line, box.adjusted(1, 1, -1, -1)).has_value();
    });
  });
}

/// At the first free place where no mark goes through it, or at the first free one.
void PlaceCaption(const LayoutContext& context, const QRectF& plot,
                  const std::vector<MarkItem>& marks, MarkItem& item) {
  const Font& base = context.graph.GetAppearance().font_for_labels;
  const QString text = QString::fromStdString(item.mark.caption).simplified();
  if (text.isEmpty()) return;
  Font font = base;
  font.color = item.mark.color;
  PlacedText caption =
      MakeText({context.metrics.Elided(text, font, plot.width() / 2), {}}, font, context.metrics);
  for (const QPointF& place : CaptionPlaces(item, plot, caption.size)) {
    caption.center = place;
    if (item.mark.type == MarkType::Text) item.caption = caption;  // stands where it was put
    if (!plot.contains(caption.Box()) || !context.room.IsFree(caption)) continue;
    const bool clear = !IsStruckOut(caption.Box(), marks);
    if (clear || !item.caption) item.caption = caption;
    if (clear) break;
  }
  if (item.caption) context.room.Take(*item.caption);
}

}  // namespace

QPolygonF HeadOf(const MarkItem& item, const QRectF& plot) {
  const double length = item.line.length();
  const bool seen = item.mark.type == MarkType::Arrow && length > 0 &&
                    plot.adjusted(1, 1, -1, -1).contains(item.line.p2());
  if (!seen) return {};
  const double size = std::min(1.0, length / kHeadLength);
  const QPointF along = (item.line.p2() - item.line.p1()) / length * size;
  const QPointF across(-along.y(), along.x());
  const QPointF behind = item.line.p2() - along * kHeadLength;
  return QPolygonF(
      {item.line.p2(), behind + across * kHeadWidth / 2, behind - across * kHeadWidth / 2});
}

void LayoutMarks(const LayoutContext& context, PlotLayout& layout) {
  if (!context.graph.GetAppearance().marks_are_shown) return;
  for (const Mark& mark : context.graph.Marks().All()) {
    if (mark.status == MarkStatus::NotDrawn) continue;
    const AxisId y_axis = mark.status == MarkStatus::XAndY ? AxisId::Y : AxisId::Y2;
    MarkItem item;
    item.mark = mark;
    if (!PlaceMark(layout.plot, layout.Axis(AxisId::X).scale, layout.Axis(y_axis).scale, item)) {
      continue;
    }
    if (HasEnd(mark.type) && !CutToPlot(layout.plot, item)) continue;
    if (mark.type != MarkType::Rectangle && !item.line.isNull()) item.lines = {item.line};
    layout.marks.push_back(std::move(item));
  }
  // Captions after all marks, so that every mark is drawn even where captions find no room.
  for (MarkItem& item : layout.marks) PlaceCaption(context, layout.plot, layout.marks, item);
}

}  // namespace tarnwick
