// A small picture prepared for being laid over pixels many times. Knows pixels; no painter, no DataSet.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include <QRect>
#include <QRgb>

class QImage;

namespace tarnwick {

class RasterTile {
 public:
  /// Of an image with premultiplied colours; what is transparent all around costs nothing.
  explicit RasterTile(const QImage& image);

  /// The pixels it covers when the image's upper left corner comes to (0, 0).
  const QRect& Covers() const { return covers_; }

  /// The columns that it writes, some of them unchanged.
  int WrittenColumns() const { return static_cast<int>(StepsOfRow()) * kStep; }

  /// Lays the tile over the pixels from `pixel` on, the upper left one of what it covers; `row` pixels lie from one row to the
  /// next.
  void LayOver(QRgb* pixel, std::ptrdiff_t row) const;

 private:
  static constexpr int kStep = 2;  // pixels laid at once
  // Their channels: what is added, and what is left of the pixels below, of 255.
  struct Step {
    std::uint8_t source[4 * kStep];
    std::uint16_t rest[4 * kStep];
  };

  std::size_t StepsOfRow() const {
    return static_cast<std::size_t>((covers_.width() + kStep - 1) / kStep);
  }

  QRect covers_;
  std::vector<Step> steps_;  // row by row
};

}  // namespace tarnwick
