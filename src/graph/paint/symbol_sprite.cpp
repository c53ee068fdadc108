#include "graph/paint/symbol_sprite.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include <QPainter>

namespace tarnwick {

namespace {

QPainterPath Polygon(std::initializer_list<QPointF> corners) {
  QPainterPath path;
  path.addPolygon(QPolygonF(QList<QPointF>(corners)));
  path.closeSubpath();
  return path;
}

// Strokes through the centre at `count` evenly spread angles, the first at `start` (radians).
QPainterPath Strokes(int count, double start, double radius) {
  QPainterPath path;
  for (int i = 0; i < count; ++i) {
    const double angle = start + std::numbers::pi * i / count;
    const QPointF tip(radius * std::cos(angle), radius * std::sin(angle));
    path.moveTo(-tip);
    path.lineTo(tip);
  }
  return path;
}

double StrokeWidth(const SymbolLook& look) {
  return std::clamp(look.size * 0.16, 1.0, 3.0);
}

}  // namespace

SymbolLook LookOf(const SeriesStyle& style) {
  const Color color = style.symbol_color;
  return {style.symbol, style.fill_symbols ? SymbolFill::Filled : SymbolFill::Hollow,
          QColor(color.Red(), color.Green(), color.Blue()),
          static_cast<double>(std::clamp(style.symbol_size, 1, 200))};
}

// Shapes other than the circle are sized to look equally large: the triangles and the diamond reach further than the square.
QPainterPath SymbolPath(SymbolShape shape, double size) {
  const double r = size / 2;
  switch (shape) {
    case SymbolShape::Square:
      return Polygon({{-0.88 * r, -0.88 * r},
                      {0.88 * r, -0.88 * r},
                      {0.88 * r, 0.88 * r},
                      {-0.88 * r, 0.88 * r}});
    case SymbolShape::Diamond:
      return Polygon({{0, -1.15 * r}, {1.15 * r, 0}, {0, 1.15 * r}, {-1.15 * r, 0}});
    case SymbolShape::TriangleUp:
      return Polygon({{0, -1.15 * r}, {1.1 * r, 0.75 * r}, {-1.1 * r, 0.75 * r}});
    case SymbolShape::TriangleDown:
      return Polygon({{0, 1.15 * r}, {1.1 * r, -0.75 * r}, {-1.1 * r, -0.75 * r}});
    case SymbolShape::Plus:
      return Strokes(2, 0, r);
    case SymbolShape::Cross:
      return Strokes(2, std::numbers::pi / 4, 1.1 * r);
    case SymbolShape::Star:
      return Strokes(3, std::numbers::pi / 2, r);
    case SymbolShape::Dot:
    case SymbolShape::Circle:
      break;
  }
  QPainterPath circle;
  const double radius = shape == SymbolShape::Dot ? std::max(0.5, 0.4 * r) : r;
  circle.addEllipse(QPointF(0, 0), radius, radius);
  return circle;
}

bool IsOpenSymbol(SymbolShape shape) {
  return shape == SymbolShape::Plus || shape == SymbolShape::Cross || shape == SymbolShape::Star;
}

void PaintSymbol(QPainter& painter, QPointF center, const SymbolLook& look, double scale) {
  const double size = std::clamp(look.size, 1.0, 200.0) * scale;
  const bool open = IsOpenSymbol(look.shape);
  const bool filled = !open && (look.fill == SymbolFill::Filled || look.shape == SymbolShape::Dot);
  const double width = StrokeWidth(look) * scale;
  // A hollow shape keeps its outline within its size.
  QPainterPath path = SymbolPath(look.shape, filled || open ? size : std::max(size - width, width));
  path.translate(center);
  if (filled) {
    painter.fillPath(path, look.color);
  } else {
    painter.strokePath(path, QPen(look.color, width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
  }
}

SymbolSprite MakeSprite(const SymbolLook& look, double scale) {
  const double reach = std::clamp(look.size, 1.0, 200.0) * scale * 0.65 + 2;
  SymbolSprite sprite;
  sprite.hot_spot = static_cast<int>(std::ceil(reach));
  const int side = 2 * sprite.hot_spot + 1;
  sprite.image = QImage(side, side, QImage::Format_ARGB32_Premultiplied);
  sprite.image.fill(Qt::transparent);
  QPainter painter(&sprite.image);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintSymbol(painter, QPointF(sprite.hot_spot + 0.5, sprite.hot_spot + 0.5), look, scale);
  return sprite;
}

}  // namespace tarnwick
