#include "graph/raster/raster_surface.h"

#include <algorithm>

#include <QImage>
#include <QPaintEngine>
#include <QPainter>

#include "graph/raster/raster_tile.h"

namespace tarnwick {

namespace {

bool DrawsPlainly(const QPainter& painter) {
  return painter.compositionMode() == QPainter::CompositionMode_SourceOver &&
         painter.opacity() == 1 && !painter.hasClipping();
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
  const QRect seen = rect & clip_;
  if (seen.isEmpty()) return;
  const int width = seen.width(), end = seen.bottom() + 1;
  if (ink.rest == 0 && width > 1) {
    QRgb* first = PixelAt(seen.left(), seen.top());
    for (int row = seen.top(); row < end; ++row, first += row_) {
      std::fill_n(first, width, ink.source);
    }
    return;
  }
  for (int column = seen.left(); column <= seen.right(); ++column) {
    LayRun(column, seen.top(), end, ink);
  }
}

bool RasterSurface::Lay(QPoint corner, const RasterTile& tile) {
  QRect written = tile.Covers().translated(corner);
  written.setWidth(tile.WrittenColumns());
  if (!clip_.contains(written)) return false;
  tile.LayOver(PixelAt(written.left(), written.top()), row_);
  return true;
}

void RasterSurface::LayRun(int column, int top, int end, const RasterInk& ink) {
  QRgb* pixel = PixelAt(column, top);
  if (ink.rest == 0) {
    for (int row = top; row < end; ++row, pixel += row_) *pixel = ink.source;
    return;
  }
  // What lies below is mostly of one colour.
  QRgb below = *pixel, laid = ink.Over(below);
  for (int row = top; row < end; ++row, pixel += row_) {
    if (*pixel != below) {
      below = *pixel;
      laid = ink.Over(below);
    }
    *pixel = laid;
  }
}

}  // namespace tarnwick
