#include "graph/raster_surface.h"

#include <algorithm>

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

namespace tarnwick {

namespace {

bool DrawsPlainly(const QPainter& painter) {
  return painter.compositionMode() == QPainter::CompositionMode_SourceOver &&
         painter.opacity() == 1 && !painter.hasClipping();
}

// Each channel times alpha / 255, rounded; two channels at a time.
QRgb Scaled(QRgb color, QRgb alpha) {
  constexpr QRgb kEven = 0xFF00FF, kHalf = 0x800080;
  const auto times = [](QRgb channels, QRgb factor) {
    const QRgb product = channels * factor;
    return product + ((product >> 8) & kEven) + kHalf;
  };
  return ((times(color & kEven, alpha) >> 8) & kEven) |
         (times((color >> 8) & kEven, alpha) & ~kEven);
}

}  // namespace

std::optional<RasterSurface> RasterSurface::Of(const QPainter& painter, const QRectF& clip) {
  const QPaintEngine* const engine = painter.paintEngine();
  if (engine == nullptr || engine->type() != QPaintEngine::Raster || !DrawsPlainly(painter) ||
      !engine->systemClip().isEmpty()) {
    return std::nullopt;
  }
  QPaintDevice* const device = engine->paintDevice();
  if (device == nullptr || device->devType() != QInternal::Image) return std::nullopt;
  auto& image = static_cast<QImage&>(*device);
  if (image.format() != QImage::Format_RGB32 &&
      image.format() != QImage::Format_ARGB32_Premultiplied) {
    return std::nullopt;
  }
  return RasterSurface(image, clip.toRect().intersected(image.rect()));
}

// An image that a painter draws on is never shared, therefore asking for its pixels copies nothing.
RasterSurface::RasterSurface(QImage& image, const QRect& clip)
    : pixels_(reinterpret_cast<QRgb*>(image.bits())),
      row_(image.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))),
      clip_(clip) {}

void RasterSurface::Fill(const QRect& rect, const RasterInk& ink) {
  const int left = std::max(rect.left(), clip_.left()),
            right = std::min(rect.right(), clip_.right());
  const int top = std::max(rect.top(), clip_.top());
  const int bottom = std::min(rect.bottom(), clip_.bottom());
  if (left > right) return;
  QRgb* const first = pixels_ + top * row_ + left;
  const int width = right - left + 1, height = bottom - top + 1;
  if (ink.rest != 0) {
    const auto over = [&ink](QRgb below) { return ink.source + Scaled(below, ink.rest); };
    for (int column = 0; column < width; ++column) {
      QRgb* pixel = first + column;
      for (int row = height; row > 0; --row, pixel += row_) *pixel = over(*pixel);
    }
  } else if (width == 1) {
    QRgb* pixel = first;
    for (int row = height; row > 0; --row, pixel += row_) *pixel = ink.source;
  } else {
    for (int row = 0; row < height; ++row) std::fill_n(first + row * row_, width, ink.source);
  }
}

}  // namespace tarnwick
