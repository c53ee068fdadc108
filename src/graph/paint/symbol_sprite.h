// The shapes that mark points: as a path for vector devices, as a small image for raster devices. Knows shapes and colours, no
// DataSet.
#pragma once

#include <QColor>
#include <QImage>
#include <QPainterPath>

#include "graph/series_style.h"

class QPainter;

namespace tarnwick {

enum class SymbolFill { Filled, Hollow };

/// One symbol's look.
struct SymbolLook {
  SymbolShape shape = SymbolShape::Circle;
  SymbolFill fill = SymbolFill::Filled;
  QColor color;
  double size = 6;  ///< pixels across, outline included; held to 1..200
};

SymbolLook LookOf(const SeriesStyle& style);

/// The shape's outline around (0, 0), `size` across. Plus, cross and star are open strokes.
QPainterPath SymbolPath(SymbolShape shape, double size);

/// A shape of strokes only.
bool IsOpenSymbol(SymbolShape shape);

/// Draws the symbol at `center`, scaled by `scale`, with the painter's transformation.
void PaintSymbol(QPainter& painter, QPointF center, const SymbolLook& look, double scale = 1);

/// A symbol drawn once, anti-aliased: its centre is the middle of pixel (hot_spot, hot_spot).
struct SymbolSprite {
  QImage image;
  int hot_spot = 0;
};

SymbolSprite MakeSprite(const SymbolLook& look, double scale);

}  // namespace tarnwick
