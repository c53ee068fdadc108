// What the painters of DataSets share: the painter in units of the cells that points are thinned by. Knows painters, axes' maps
// and the frame; no DataSet.
#pragma once

#include <optional>

#include <QRectF>
#include <QTransform>

#include "graph/paint/series_painter.h"
#include "graph/raster/raster_surface.h"
#include "graph/thinning/thinning.h"

class QPainter;

namespace tarnwick {

/// One unit is a cell: the device pixel, or a fine grid on a vector device. Restores the painter's state in the end.
class DeviceSpace {
 public:
  DeviceSpace(QPainter& painter, const SeriesFrame& frame);
  ~DeviceSpace();
  DeviceSpace(const DeviceSpace&) = delete;
  DeviceSpace& operator=(const DeviceSpace&) = delete;

  QPainter& Painter() { return painter_; }
  bool Raster() const { return raster_; }
  /// The painter's own pixels, where they can be written.
  RasterSurface* Surface() { return surface_ ? &*surface_ : nullptr; }
  /// Cells to a logical pixel.
  double Scale() const { return to_cells_.m11(); }
  QRectF Map(const QRectF& rect) const { return to_cells_.mapRect(rect); }
  PixelMap MapX(const AxisScale& scale) const { return {scale, to_cells_.m11(), to_cells_.dx()}; }
  PixelMap MapY(const AxisScale& scale) const { return {scale, to_cells_.m22(), to_cells_.dy()}; }

 private:
  QPainter& painter_;
  bool raster_ = false;
  std::optional<RasterSurface> surface_;
  QTransform to_cells_;
};

/// How the DataSet's Y is thinned there.
ThinningView ViewOf(const DeviceSpace& space, const TSeries& series, const SeriesFrame& frame);

}  // namespace tarnwick
