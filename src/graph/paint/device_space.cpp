#include "graph/paint/device_space.h"

#include <QPaintEngine>
#include <QPainter>

#include "graph/series.h"

namespace tarnwick {

namespace {

constexpr double kVectorPixels = 4;  // cells a logical pixel that a vector device is given

}  // namespace

DeviceSpace::DeviceSpace(QPainter& painter, const SeriesFrame& frame) : painter_(painter) {
  painter_.save();
  const QTransform device = painter.deviceTransform();
  if (device.type() <= QTransform::TxScale) {
    surface_ = RasterSurface::Of(painter, device.mapRect(frame.clip));
  }
  painter_.setClipRect(frame.clip, Qt::IntersectClip);
  raster_ = painter.paintEngine() != nullptr &&
            painter.paintEngine()->type() == QPaintEngine::Raster &&
            device.type() <= QTransform::TxScale && device.m11() > 0 && device.m22() > 0;
  to_cells_ = raster_ ? device : QTransform::fromScale(kVectorPixels, kVectorPixels);
  painter_.setWorldTransform(to_cells_.inverted(), true);
}

DeviceSpace::~DeviceSpace() {
  painter_.restore();
}

ThinningView ViewOf(const DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  const QRect columns = space.Map(frame.clip).toAlignedRect();
  return {.x = space.MapX(frame.x),
          .y = space.MapY(frame.y),
          .ordinate = Ordinate::Y,
          .zero_value = series.ZeroValue(),
          .base_line_slope = series.BaseLineSlope(),
          .first_column = columns.left(),
          .last_column = columns.right()};
}

}  // namespace tarnwick
