// The image below a painter, for filling many small rectangles straight into its pixels: a painter spends more on each than
// the pixels cost. Knows pixel formats and one clip rectangle; no pens, lines or DataSets.
#pragma once

#include <optional>
#include <span>

#include <QRect>
#include <QRgb>

class QImage;
class QPainter;

namespace tarnwick {

class RasterSurface {
 public:
  /// The painter's image, written inside `clip` (device pixels) only. None when the painter draws on anything but an image
  /// with 32 bits a pixel, or has a clip of its own: those need the painter.
  static std::optional<RasterSurface> Of(const QPainter& painter, const QRectF& clip);

  /// Lays the colour (not premultiplied) over each rectangle, which have width and height. Only between two calls of the painter, as
  /// which it draws the same pixels.
  void Fill(std::span<const QRect> rects, QRgb color);

 private:
  RasterSurface(QImage& image, const QRect& clip);

  QRgb* pixels_;
  std::ptrdiff_t row_;  // pixels from one row to the next
  QRect clip_;
};

}  // namespace tarnwick
