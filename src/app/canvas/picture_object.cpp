#include "app/canvas/picture_object.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

using Kind = PictureObject::Kind;

constexpr double kReach = 5;
constexpr double kMarkMargin = 3;
constexpr double kShortestWithTips = 4 * kReach;

double DistanceTo(const QLineF& line, QPointF place) {
  const QPointF along = line.p2() - line.p1();
  const double length = QPointF::dotProduct(along, along);
  const double share =
      length > 0 ? std::clamp(QPointF::dotProduct(place - line.p1(), along) / length, 0.0, 1.0)
                 : 0.0;
  const QPointF way = place - (line.p1() + share * along);
  return std::hypot(way.x(), way.y());
}

bool IsMet(const MarkItem& item, QPointF place) {
  if (item.caption && item.caption->Box().contains(place)) return true;
  if (item.mark.type != MarkType::Point) {
    return std::ranges::any_of(
        item.lines, [&](const QLineF& line) { return DistanceTo(line, place) <= kReach; });
  }
  return QLineF(item.point, place).length() <= item.radius + kMarkMargin;
}

/// Where the origin or end of a mark that has both is drawn; nothing for one out of sight and for other marks.
std::optional<QPointF> TipOf(const PlotLayout& layout, const MarkItem& item, Kind tip) {
  const Mark& mark = item.mark;
  if (!HasEnd(mark.type) || tip == Kind::Mark) return std::nullopt;
  const bool origin = tip == Kind::MarkOrigin;
  const AxisId y_axis = mark.status == MarkStatus::XAndY2 ? AxisId::Y2 : AxisId::Y;
  const QPointF place(layout.Axis(AxisId::X).scale.Position(origin ? mark.x1 : mark.x2),
                      layout.Axis(y_axis).scale.Position(origin ? mark.y1 : mark.y2));
  const QPointF drawn = origin ? item.line.p1() : item.line.p2();
  // Else it was cut at the plot's edge.
  const bool seen = QLineF(place, drawn).length() <= 1 && layout.plot.contains(drawn);
  return seen ? std::optional(drawn) : std::nullopt;
}

Kind PartAt(const PlotLayout& layout, const MarkItem& item, QPointF place) {
  if (item.line.length() < kShortestWithTips) return Kind::Mark;
  for (const Kind kind : {Kind::MarkEnd, Kind::MarkOrigin}) {
    const auto tip = TipOf(layout, item, kind);
    if (tip && QLineF(*tip, place).length() <= kReach) return kind;
  }
  return Kind::Mark;
}

/// A band along the line, or a ring about the point or tip.
QPainterPath OutlineOf(const PlotLayout& layout, const MarkItem& item, Kind part) {
  QPainterPath path;
  if (const auto tip = TipOf(layout, item, part)) {
    path.addEllipse(*tip, kReach, kReach);
    return path;
  }
  if (item.mark.type == MarkType::Point) {
    const double radius = item.radius + kMarkMargin;
    path.addEllipse(item.point, radius, radius);
    return path;
  }
  if (item.mark.type == MarkType::Text) {
    if (item.caption) path.addRect(item.caption->Box());
    return path;
  }
  for (const QLineF& line : item.lines) {
    path.moveTo(line.p1());
    path.lineTo(line.p2());
  }
  QPainterPathStroker stroker;
  stroker.setWidth(2 * kMarkMargin + 1);
  return stroker.createStroke(path);
}

}  // namespace

std::optional<PictureObject> ObjectAt(const PlotLayout& layout, QPointF place) {
  if (layout.legend && layout.legend->frame.contains(place)) return PictureObject{Kind::Legend, 0};
  // The last drawn lies on top.
  for (auto mark = layout.marks.rbegin(); mark != layout.marks.rend(); ++mark) {
    if (IsMet(*mark, place)) return PictureObject{PartAt(layout, *mark, place), mark->mark.id};
  }
  return std::nullopt;
}

QPainterPath OutlineOf(const PlotLayout& layout, const PictureObject& object) {
  QPainterPath path;
  switch (object.kind) {
    case Kind::Legend:
      if (layout.legend) path.addRect(layout.legend->frame);
      break;
    case Kind::Mark:
    case Kind::MarkOrigin:
    case Kind::MarkEnd:
      for (const MarkItem& item : layout.marks) {
        if (item.mark.id == object.id) path = OutlineOf(layout, item, object.kind);
      }
      break;
  }
  return path;
}

}  // namespace tarnwick
