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

void RasterSurface::Fill(std::span<const QRect> rects, QRgb color) {
  const QRgb source = qPremultiply(color);
  const QRgb rest = 255U - static_cast<QRgb>(qAlpha(color));
  for (const QRect& whole : rects) {
    const QRect rect = whole.intersected(clip_);
    if (rect.isEmpty()) continue;
    QRgb* row = pixels_ + rect.top() * row_ + rect.left();
    for (int y = rect.top(); y <= rect.bottom(); ++y, row += row_) {
      if (rest == 0) {
        std::fill_n(row, rect.width(), source);
      } else {
        std::transform(row, row + rect.width(), row,
                       [=](QRgb below) { return source + Scaled(below, rest); });
      }
    }
  }
}

}  // namespace tarnwick
