#include "graph/thinning/line_clip.h"

namespace tarnwick {

namespace {

// The part of a segment, 0 <= from <= to <= 1, that lies inside.
struct Cut {
  double from = 0;
  double to = 1;
};

// Narrows the cut to where start + t * step >= 0. False when nothing is left.
bool KeepPositive(double start, double step, Cut& cut) {
  if (step == 0) return start >= 0;
  const double t = -start / step;
  if (step > 0) {
    if (t > cut.from) cut.from = t;
  } else if (t < cut.to) {
    cut.to = t;
  }
  return cut.from <= cut.to;
}

bool CutSegment(PixelPoint a, PixelPoint b, const QRectF& area, Cut& cut) {
  const double dx = b.x - a.x, dy = b.y - a.y;
  return KeepPositive(a.x - area.left(), dx, cut) && KeepPositive(area.right() - a.x, -dx, cut) &&
         KeepPositive(a.y - area.top(), dy, cut) && KeepPositive(area.bottom() - a.y, -dy, cut);
}

QPointF Along(PixelPoint a, PixelPoint b, double t) {
  return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t};
}

}  // namespace

std::vector<QPolygonF> ClipPolyline(std::span<const PixelPoint> points, const QRectF& area) {
  std::vector<QPolygonF> pieces;
  if (points.size() == 1 && area.contains(QPointF(points[0].x, points[0].y))) {
    pieces.push_back({QPointF(points[0].x, points[0].y)});
  }
  bool joined = false;
  for (std::size_t i = 0; i + 1 < points.size(); ++i) {
    Cut cut;
    if (!CutSegment(points[i], points[i + 1], area, cut)) {
      joined = false;
      continue;
    }
    if (!joined || cut.from > 0) {
      pieces.emplace_back();
      pieces.back().append(Along(points[i], points[i + 1], cut.from));
    }
    pieces.back().append(cut.to < 1 ? Along(points[i], points[i + 1], cut.to)
                                    : QPointF(points[i + 1].x, points[i + 1].y));
    joined = cut.to == 1;
  }
  return pieces;
}

}  // namespace tarnwick
