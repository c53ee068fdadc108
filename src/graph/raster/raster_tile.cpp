#include "graph/raster/raster_tile.h"

#include <algorithm>
#include <cstring>

#include <QImage>

namespace tarnwick {

namespace {

using Bytes = std::uint8_t __attribute__((vector_size(8)));
using Channels = std::uint16_t __attribute__((vector_size(16)));

QRgb PixelOf(const QImage& image, int column, int row) {
  return reinterpret_cast<const QRgb*>(image.constScanLine(row))[column];
}

QRect CoveredBy(const QImage& image) {
  QRect covers;
  for (int row = 0; row < image.height(); ++row) {
    for (int column = 0; column < image.width(); ++column) {
      if (qAlpha(PixelOf(image, column, row)) != 0) covers |= QRect(column, row, 1, 1);
    }
  }
  return covers;
}

}  // namespace

RasterTile::RasterTile(const QImage& image) : covers_(CoveredBy(image)) {
  for (int row = covers_.top(); row <= covers_.bottom(); ++row) {
    for (int column = covers_.left(); column <= covers_.right(); column += kStep) {
      Step step;
      for (int i = 0; i < kStep; ++i) {
        const bool covered = column + i <= covers_.right();
        const QRgb color = covered ? PixelOf(image, column + i, row) : 0;
        std::memcpy(step.source + 4 * i, &color, sizeof(color));
        std::fill_n(step.rest + 4 * i, 4, static_cast<std::uint16_t>(255 - qAlpha(color)));
      }
      steps_.push_back(step);
    }
  }
}

// Each channel times rest / 255, rounded, plus the source; all channels of a step at a time.
void RasterTile::LayOver(QRgb* pixel, std::ptrdiff_t row) const {
  const std::size_t steps = StepsOfRow();
  const Step* step = steps_.data();
  for (int line = covers_.height(); line > 0; --line, pixel += row) {
    auto* at = reinterpret_cast<unsigned char*>(pixel);
    for (std::size_t i = 0; i < steps; ++i, ++step, at += sizeof(step->source)) {
      Bytes below, source;
      Channels rest;
      std::memcpy(&below, at, sizeof(below));
      std::memcpy(&source, step->source, sizeof(source));
      std::memcpy(&rest, step->rest, sizeof(rest));
      Channels product = __builtin_convertvector(below, Channels) * rest;
      product = (product + (product >> 8) + 128) >> 8;
      const Bytes laid = source + __builtin_convertvector(product, Bytes);
      std::memcpy(at, &laid, sizeof(laid));
    }
  }
}

}  // namespace tarnwick
