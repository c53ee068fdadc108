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

RasterStamp::RasterStamp(const QImage& image) {
  for (int y = 0; y < image.height(); ++y) {
    const auto* const line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    int begin = 0, end = image.width();
    while (begin < end && line[begin] == 0) ++begin;
    while (begin < end && line[end - 1] == 0) --end;
    if (begin == end) continue;
    const auto opaque = [line](int x) { return qAlpha(line[x]) == 255; };
    int solid = begin;
    while (solid < end && !opaque(solid)) ++solid;
    int solid_end = solid;
    while (solid_end < end && opaque(solid_end)) ++solid_end;
    rows_.push_back(
        {QPoint(begin, y), pixels_.size(), end - begin, solid - begin, solid_end - begin});
    pixels_.insert(pixels_.end(), line + begin, line + end);
  }
}

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

void RasterSurface::Lay(const RasterStamp& stamp, QPoint corner) {
  for (const RasterStamp::Row& row : stamp.rows_) {
    const QPoint start = corner + row.start;
    if (start.y() < clip_.top() || start.y() > clip_.bottom()) continue;
    const int begin = std::max(clip_.left() - start.x(), 0);
    const int end = std::min(clip_.right() + 1 - start.x(), row.count);
    const QRgb* const source = stamp.pixels_.data() + row.first;
    QRgb* const below = pixels_ + start.y() * row_ + start.x();
    const auto blend = [source, below](int from, int to) {
      for (int i = from; i < to; ++i) {
        below[i] = source[i] + Scaled(below[i], 255U - static_cast<QRgb>(qAlpha(source[i])));
      }
    };
    blend(begin, std::min(row.solid, end));
    for (int i = std::max(row.solid, begin); i < std::min(row.solid_end, end); ++i) {
      below[i] = source[i];
    }
    blend(std::max(row.solid_end, begin), end);
  }
}

}  // namespace tarnwick
