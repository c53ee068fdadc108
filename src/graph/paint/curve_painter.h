// Draws a thinned line with a pen. Knows painter and pixels, no DataSet.
#pragma once

#include <QColor>
#include <QPen>
#include <QRect>
#include <QRectF>

#include "graph/appearance.h"
#include "graph/thinning/thinning.h"

class QPainter;

namespace tarnwick {

class LineCover;
class RasterSurface;

struct CurvePen {
  QColor color;
  double width = 1;  ///< in the painter's pixels
  LineStyle style = LineStyle::Solid;
};

/// The painter's pen: round joins, dashes in proportion to the width. Style None, or any unknown one, draws nothing.
QPen MakePen(const CurvePen& pen);

/// How a device takes a dense line: as bars of whole pixels, or as the polyline itself.
enum class DenseLine { Bars, Polyline };

/// Draws the line inside `clip` (the painter's pixels, which are the line's). Long stretches that jump up and down within a
/// column are drawn as bars, where the device takes them; those are solid whatever the pen's style. They go straight to
/// `surface`, the painter's own, where there is one.
void DrawCurve(QPainter& painter, const ThinnedLine& line, const CurvePen& pen, const QRectF& clip,
               DenseLine dense, RasterSurface* surface = nullptr);

/// Fills what a solid line covers inside `clip`, whose pixels are the cover's.
void DrawCover(QPainter& painter, const LineCover& cover, const CurvePen& pen, const QRect& clip,
               RasterSurface* surface);

}  // namespace tarnwick
