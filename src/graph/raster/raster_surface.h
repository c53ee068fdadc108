// The image below a painter, for filling many small rectangles straight into its pixels: a painter spends more on each than
// the pixels cost. Knows pixel formats and one clip rectangle; no pens, lines or DataSets.
#pragma once

#include <cstddef>
#include <optional>

#include <QRect>
#include <QRgb>

class QImage;
class QPainter;

namespace tarnwick {

class RasterTile;

/// A colour prepared for being laid over pixels.
struct RasterInk {
  RasterInk() = default;
  explicit RasterInk(QRgb color)
      : source(qPremultiply(color)), rest(255U - static_cast<QRgb>(qAlpha(color))) {}

  /// What the pixel becomes.
  QRgb Over(QRgb below) const { return source + Scaled(below, rest); }

  QRgb source = 0;  ///< premultiplied
  QRgb rest = 255;  ///< what is left of the pixel below, of 255

 private:
  // Each channel times alpha / 255, rounded; two channels at a time.
  static QRgb Scaled(QRgb color, QRgb alpha) {
    constexpr QRgb kEven = 0xFF00FF, kHalf = 0x800080;
    const auto times = [](QRgb channels, QRgb factor) {
      const QRgb product = channels * factor;
      return product + ((product >> 8) & kEven) + kHalf;
    };
    return ((times(color & kEven, alpha) >> 8) & kEven) |
           (times((color >> 8) & kEven, alpha) & ~kEven);
  }
};

class RasterSurface {
 public:
  /// The painter's image, written inside `clip` (device pixels) only. None when the painter draws on anything but an image
  /// with 32 bits a pixel, or has a clip of its own: those need the painter.
  static std::optional<RasterSurface> Of(const QPainter& painter, const QRectF& clip);

  /// Lays the ink over a rectangle, the same pixels as the painter's. Only between two calls of the painter.
  void Fill(const QRect& rect, const RasterInk& ink);

  /// The pixels that may be written.
  const QRect& Clip() const { return clip_; }
  /// Lays the ink over one pixel inside Clip().
  void Lay(int column, int row, const RasterInk& ink) {
    QRgb& pixel = *PixelAt(column, row);
    pixel = ink.Over(pixel);
  }
  /// Lays the ink over the rows top <= row < end of a column, at least one, all inside Clip().
  void LayRun(int column, int top, int end, const RasterInk& ink);
  /// Lays the tile with its image's upper left corner at the pixel. False, and nothing done, unless it lies inside Clip().
  bool Lay(QPoint corner, const RasterTile& tile);

 private:
  RasterSurface(QImage& image, const QRect& clip);

  QRgb* PixelAt(int column, int row) const { return pixels_ + row * row_ + column; }

  QRgb* pixels_;
  std::ptrdiff_t row_;  // pixels from one row to the next
  QRect clip_;
};

}  // namespace tarnwick
