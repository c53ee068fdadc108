#include "graph/metafile/metafile_shapes.h"

#include <QLineF>
#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarnwick {
namespace {

/// One edge of a rectangle: what lies on its inner side has coordinate × sign ≥ bound × sign.
struct Edge {
  bool upright;
  double bound;
  double sign;
  double Inside(QPointF point) const { return ((upright ? point.x() : point.y()) - bound) * sign; }
};

QPolygonF ClipToEdge(const QPolygonF& polygon, const Edge& edge) {
  QPolygonF kept;
  for (qsizetype i = 0; i < polygon.size(); ++i) {
    const QPointF& from = polygon[i == 0 ? polygon.size() - 1 : i - 1];
    const QPointF& to = polygon[i];
    const double before = edge.Inside(from);
    const double after = edge.Inside(to);
    if ((before < 0) != (after < 0)) kept << from + (to - from) * (before / (before - after));
    if (after >= 0) kept << to;
  }
  return kept;
}

/// Collects the dashes of one line as it is walked along.
class DashWalk {
 public:
  DashWalk(const QList<qreal>& pattern, double shortened)
      : pattern_(pattern), shortened_(shortened), left_(pattern.front()) {}

  void Along(const QLineF& segment) {
    double done = 0;
    const double length = segment.length();
    if (on_ && dash_.isEmpty()) dash_ << segment.p1();
    while (length - done > left_) {
      done += left_;
      Turn(segment.pointAt(done / length));
    }
    left_ -= length - done;
    if (on_) dash_ << segment.p2();
  }
  QList<QPolygonF> Finish() {
    if (on_) Keep();
    return dashes_;
  }

 private:
  void Turn(QPointF here) {
    if (on_) {
      dash_ << here;
      Keep();
    }
    on_ = !on_;
    dash_.clear();
    if (on_) dash_ << here;
    part_ = (part_ + 1) % pattern_.size();
    left_ = pattern_[part_];
  }
  void Keep() {
    if (dash_.size() < 2) return;
    constexpr double kRest = 0.1;  // of the dash, on either side of its middle
    const auto moved = [&](QPointF end, QPointF next) {
      const double length = QLineF(end, next).length();
      return length > 0
                 ? end + (next - end) * (std::min(shortened_, length * (0.5 - kRest)) / length)
                 : end;
    };
    const QPointF first = moved(dash_[0], dash_[1]);
    const QPointF last = moved(dash_.back(), dash_[dash_.size() - 2]);
    dash_.front() = first;
    dash_.back() = last;
    dashes_ << dash_;
  }

  const QList<qreal>& pattern_;
  double shortened_;
  double left_;  // of the part of the pattern that has begun
  qsizetype part_ = 0;
  bool on_ = true;
  QPolygonF dash_;
  QList<QPolygonF> dashes_;
};

}  // namespace

QPolygonF ClipPolygon(const QPolygonF& polygon, const QRectF& area) {
  QPolygonF clipped;
  std::copy_if(polygon.begin(), polygon.end(), std::back_inserter(clipped),
               [](QPointF point) { return std::isfinite(point.x()) && std::isfinite(point.y()); });
  for (const Edge& edge : {Edge{true, area.left(), 1}, Edge{true, area.right(), -1},
                           Edge{false, area.top(), 1}, Edge{false, area.bottom(), -1}}) {
    clipped = ClipToEdge(clipped, edge);
  }
  return clipped.size() < 3 ? QPolygonF() : clipped;
}

QList<QPolygonF> CutIntoDashes(const QPolygonF& line, const QList<qreal>& pattern,
                               double shortened) {
  const double period = std::accumulate(pattern.begin(), pattern.end(), 0.0);
  const bool usable =
      period > 0 && std::isfinite(period) &&
      std::all_of(pattern.begin(), pattern.end(), [](double part) { return part >= 0; });
  if (!usable || line.size() < 2) return {line};
  DashWalk walk(pattern, shortened);
  for (qsizetype i = 1; i < line.size(); ++i) walk.Along({line[i - 1], line[i]});
  return walk.Finish();
}

}  // namespace tarnwick
