#include "graph/paint/curve_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

#include <QPainter>

#include "graph/raster/column_bars.h"
#include "graph/raster/raster_surface.h"
#include "graph/thinning/line_clip.h"
#include "graph/thinning/line_cover.h"

namespace tarnwick {

namespace {

constexpr double kSmooth = 1;  // mean pixels of wander in a column up to which a line is stroked
constexpr qsizetype kFewPoints = 200;  // up to which joins are worth their time

std::span<const PixelColumn> ColumnsOf(const ThinnedLine& line, const LinePart& part) {
  return std::span(line.columns).subspan(part.begin, part.end - part.begin);
}

void AddVertex(std::vector<PixelPoint>& vertices, PixelPoint point) {
  if (!vertices.empty() && vertices.back().x == point.x && vertices.back().y == point.y) return;
  vertices.push_back(point);
}

// The columns' first, extreme and last points as a polyline. Which extreme came first is not known; within one column it
// makes no difference to the eye.
std::vector<PixelPoint> VerticesOf(std::span<const PixelColumn> columns) {
  std::vector<PixelPoint> vertices;
  vertices.reserve(columns.size() * 3);
  for (const PixelColumn& column : columns) {
    const double middle = (column.first.x + column.last.x) / 2;
    const bool falling = column.first.y <= column.last.y;  // in pixels
    const double near = falling ? column.top : column.bottom;
    const double far = falling ? column.bottom : column.top;
    AddVertex(vertices, column.first);
    if (near != column.first.y) AddVertex(vertices, {middle, near});
    if (far != column.last.y) AddVertex(vertices, {middle, far});
    AddVertex(vertices, column.last);
  }
  return vertices;
}

// Leaves out vertices that lie within kTolerance of the line between those kept: a smooth curve needs few.
std::vector<PixelPoint> WithoutStraightVertices(std::span<const PixelPoint> points) {
  constexpr double kTolerance = 0.05;
  std::vector<PixelPoint> kept;
  kept.reserve(points.size());
  std::size_t start = 0;
  double lowest = -1e300,
         highest = 1e300;  // slopes from the kept vertex that pass all skipped ones
  for (std::size_t i = 0; i < points.size(); ++i) {
    if (i == 0) {
      kept.push_back(points[0]);
      continue;
    }
    const double dx = points[i].x - points[start].x;
    const double slope = dx > 0 ? (points[i].y - points[start].y) / dx : 0;
    if (i > start + 1 && (!(dx > 0) || slope < lowest || slope > highest)) {
      start = i - 1;
      kept.push_back(points[start]);
      lowest = -1e300;
      highest = 1e300;
    }
    const double step = points[i].x - points[start].x;
    if (step > 0) {
      const double rise = points[i].y - points[start].y;
      lowest = std::max(lowest, (rise - kTolerance) / step);
      highest = std::min(highest, (rise + kTolerance) / step);
    } else {  // a vertical step ends a straight stretch
      lowest = 1;
      highest = -1;
    }
  }
  if (points.size() > 1) kept.push_back(points.back());
  return kept;
}

void DrawPolyline(QPainter& painter, std::span<const PixelPoint> points, const QPen& pen,
                  const QRectF& area) {
  for (const QPolygonF& piece : ClipPolyline(points, area)) {
    if (piece.size() == 1) {
      painter.drawPoint(piece[0]);
    } else if (piece.size() <= kFewPoints || pen.style() != Qt::SolidLine) {
      painter.drawPolyline(piece);
    } else {
      // Line by line a stroke costs a fraction of that of one long path; square ends close the joins.
      QPen plain = pen;
      plain.setCapStyle(pen.widthF() > 1 ? Qt::SquareCap : Qt::FlatCap);
      painter.setPen(plain);
      QList<QLineF> lines;
      lines.reserve(piece.size() - 1);
      for (qsizetype i = 1; i < piece.size(); ++i) lines.append({piece[i - 1], piece[i]});
      painter.drawLines(lines);
      painter.setPen(pen);
    }
  }
}

QColor WithLevel(QColor color, int level) {
  color.setAlpha(level * 255 / ColumnBar::kLevels);
  return color;
}

ColumnInks InksOf(const QColor& color) {
  ColumnInks inks;
  for (int level = 0; level <= ColumnBar::kLevels; ++level) {
    inks[static_cast<std::size_t>(level)] = RasterInk(WithLevel(color, level).rgba());
  }
  return inks;
}

void FillBars(QPainter& painter, std::span<const ColumnBar> bars, const QColor& color) {
  std::array<QList<QRect>, ColumnBar::kLevels + 1> rects;
  for (const ColumnBar& bar : bars) rects[static_cast<std::size_t>(bar.level)].append(bar.rect);
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(Qt::NoPen);
  for (int level = 1; level <= ColumnBar::kLevels; ++level) {
    painter.setBrush(WithLevel(color, level));
    painter.drawRects(rects[static_cast<std::size_t>(level)]);
  }
}

void FillDense(QPainter& painter, std::span<const std::span<const PixelColumn>> parts,
               const CurvePen& pen, const QRect& clip, RasterSurface* surface) {
  if (parts.empty()) return;
  const double width = std::max(1.0, pen.width);
  if (surface != nullptr) {
    const ColumnInks inks = InksOf(pen.color);
    for (const auto& columns : parts) FillColumnBars(columns, width, clip, inks, *surface);
    return;
  }
  std::vector<ColumnBar> bars;
  for (const auto& columns : parts) AddColumnBars(columns, width, clip, bars);
  FillBars(painter, bars, pen.color);
}

}  // namespace

QPen MakePen(const CurvePen& pen) {
  constexpr Qt::PenStyle kStyles[] = {Qt::SolidLine,   Qt::DashLine,       Qt::DotLine,
                                      Qt::DashDotLine, Qt::DashDotDotLine, Qt::NoPen};
  const auto style = static_cast<std::size_t>(pen.style);
  QPen made(pen.color, pen.width);
  made.setStyle(style < std::size(kStyles) ? kStyles[style] : Qt::NoPen);
  // Round joins of nearly straight segments overlap themselves: the rasterizer counts their edges twice and dots the line.
  made.setJoinStyle(Qt::BevelJoin);
  made.setCapStyle(made.style() == Qt::SolidLine ? Qt::RoundCap : Qt::FlatCap);
  return made;
}

void DrawCurve(QPainter& painter, const ThinnedLine& line, const CurvePen& curve_pen,
               const QRectF& clip, DenseLine dense, RasterSurface* surface) {
  const QPen pen = MakePen(curve_pen);
  if (pen.style() == Qt::NoPen) return;
  const double margin = curve_pen.width + 2;
  const QRectF area = clip.adjusted(-margin, -margin, margin, margin);
  const QRect pixels = clip.toAlignedRect();
  std::vector<std::span<const PixelColumn>> dense_parts;
  painter.setRenderHint(QPainter::Antialiasing, true);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(pen);
  for (const LinePart& part : line.parts) {
    if (part.kind == LinePart::Kind::Polyline) {
      DrawPolyline(painter, std::span(line.points).subspan(part.begin, part.end - part.begin), pen,
                   area);
      continue;
    }
    const std::span<const PixelColumn> columns = ColumnsOf(line, part);
    if (dense == DenseLine::Bars && MeanWander(columns, pixels) > kSmooth) {
      dense_parts.push_back(columns);
    } else {
      DrawPolyline(painter, WithoutStraightVertices(VerticesOf(columns)), pen, area);
    }
  }
  FillDense(painter, dense_parts, curve_pen, pixels, surface);
}

void DrawCover(QPainter& painter, const LineCover& cover, const CurvePen& pen, const QRect& clip,
               RasterSurface* surface) {
  const int wider = std::max(0, static_cast<int>(std::lround(pen.width)) - 1);
  const RasterInk ink(pen.color.rgb());
  QList<QRect> rects;
  for (const QRect& run : cover.Runs()) {
    const QRect rect =
        run.adjusted(-(wider / 2), -(wider / 2), wider - wider / 2, wider - wider / 2);
    if (surface != nullptr) {
      surface->Fill(rect & clip, ink);
    } else {
      rects.append(rect);
    }
  }
  if (rects.isEmpty()) return;
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setPen(Qt::NoPen);
  painter.setBrush(pen.color);
  painter.drawRects(rects);
}

}  // namespace tarnwick
