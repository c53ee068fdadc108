#include "app/picture_object.h"

#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr double kReach = 5;
constexpr double kMarkMargin = 3;

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
  if (item.mark.type != MarkType::Point) return DistanceTo(item.line, place) <= kReach;
  return QLineF(item.point, place).length() <= item.radius + kMarkMargin;
}

/// A band along the line, or a ring about the point.
QPainterPath OutlineOf(const MarkItem& item) {
  QPainterPath path;
  if (item.mark.type == MarkType::Point) {
    const double radius = item.radius + kMarkMargin;
    path.addEllipse(item.point, radius, radius);
    return path;
  }
  path.moveTo(item.line.p1());
  path.lineTo(item.line.p2());
  QPainterPathStroker stroker;
  stroker.setWidth(2 * kMarkMargin + 1);
  return stroker.createStroke(path);
}

}  // namespace

std::optional<PictureObject> ObjectAt(const PlotLayout& layout, QPointF place) {
  using Kind = PictureObject::Kind;
  if (layout.legend && layout.legend->frame.contains(place)) return PictureObject{Kind::Legend, 0};
  // The last drawn lies on top.
  for (auto mark = layout.marks.rbegin(); mark != layout.marks.rend(); ++mark) {
    if (IsMet(*mark, place)) return PictureObject{Kind::Mark, mark->mark.id};
  }
  return std::nullopt;
}

QPainterPath OutlineOf(const PlotLayout& layout, const PictureObject& object) {
  QPainterPath path;
  switch (object.kind) {
    case PictureObject::Kind::Legend:
      if (layout.legend) path.addRect(layout.legend->frame);
      break;
    case PictureObject::Kind::Mark:
      for (const MarkItem& item : layout.marks) {
        if (item.mark.id == object.id) path = OutlineOf(item);
      }
      break;
  }
  return path;
}

}  // namespace tarnwick
