// The image below a painter, for filling many small rectangles straight into its pixels: a painter spends more on each than
// the pixels cost. Knows pixel formats and one clip rectangle; no pens, lines or DataSets.
#pragma once

#include <optional>
#include <vector>

#include <QPoint>
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

/// A small picture prepared for being laid over pixels again and again: its rows without the transparent margins.
class RasterStamp {
 public:
  /// The image is Format_ARGB32_Premultiplied.
  explicit RasterStamp(const QImage& image);

 private:
  friend class RasterSurface;
  struct Row {
    QPoint start;       // in the image
    std::size_t first;  // in pixels_
    int count;
    int solid, solid_end;  // the first run of opaque pixels
  };
  std::vector<QRgb> pixels_;
  std::vector<Row> rows_;
};

class RasterSurface {
 public:
  /// The painter's image, written inside `clip` (device pixels) only. None when the painter draws on anything but an image
  /// with 32 bits a pixel, or has a clip of its own: those need the painter.
  static std::optional<RasterSurface> Of(const QPainter& painter, const QRectF& clip);

  /// Lays the ink over a rectangle, the same pixels as the painter's. Only between two calls of the painter.
  void Fill(const QRect& rect, const RasterInk& ink);
  /// Lays a stamp with its image's corner at `corner`, the same pixels as the painter's.
  void Lay(const RasterStamp& stamp, QPoint corner);

 private:
  RasterSurface(QImage& image, const QRect& clip);

  QRgb* pixels_;
  std::ptrdiff_t row_;  // pixels from one row to the next
  QRect clip_;
};

}  // namespace tarnwick
