// The image below a painter, for filling many small rectangles straight into its pixels: a painter spends more on each than
// the pixels cost. Knows pixel formats and one clip rectangle; no pens, lines or DataSets.
#pragma once

#include <optional>

#include <QRect>
#include <QRgb>

class QImage;
class QPainter;

namespace tarnwick {

/// A colour prepared for being laid over pixels.
struct RasterInk {
  RasterInk() = default;
  explicit RasterInk(QRgb color)
      : source(qPremultiply(color)), rest(255U - static_cast<QRgb>(qAlpha(color))) {}

  QRgb source = 0;  ///< premultiplied
  QRgb rest = 255;  ///< what is left of the pixel below, of 255
};

class RasterSurface {
 public:
  /// The painter's image, written inside `clip` (device pixels) only. None when the painter draws on anything but an image
  /// with 32 bits a pixel, or has a clip of its own: those need the painter.
  static std::optional<RasterSurface> Of(const QPainter& painter, const QRectF& clip);

  /// Lays the ink over a rectangle, the same pixels as the painter's. Only between two calls of the painter.
  void Fill(const QRect& rect, const RasterInk& ink);

 private:
  RasterSurface(QImage& image, const QRect& clip);

  QRgb* pixels_;
  std::ptrdiff_t row_;  // pixels from one row to the next
  QRect clip_;
};

}  // namespace tarnwick
