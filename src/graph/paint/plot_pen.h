// What the painters of a graph's parts share: colours, texts, lines on whole device pixels. Knows painters, no graph.
#pragma once

#include <QColor>
#include <QLineF>
#include <QPainter>
#include <QRectF>

#include "base/color.h"
#include "graph/appearance.h"
#include "graph/layout/plot_layout.h"
#include "graph/paint/paint_plot.h"

namespace tarnwick {

/// The colour on a device. Numbers that name a colour of the writer's desktop become black, white or grey.
QColor QtColor(Color color);

void PaintText(QPainter& painter, const PlacedText& text);

/// Puts level and upright lines onto whole device pixels, where the device has such.
class CrispPen {
 public:
  CrispPen(QPainter& painter, PaintTarget target);

  /// A level or upright line gets sharp edges; every other line is drawn as it is. `width` in logical pixels.
  void Draw(const QLineF& line, const QColor& color, double width = 1,
            LineStyle style = LineStyle::Solid);
  /// The rectangle with its edges on device pixels.
  QRectF Snapped(const QRectF& box) const;
  void DrawFrame(const QRectF& box, const QColor& color, double width = 1);

 private:
  double SnapX(double x, double device_width) const;
  double SnapY(double y, double device_width) const;

  QPainter& painter_;
  bool on_pixels_;
  double scale_ = 1;
  double shift_x_ = 0;
  double shift_y_ = 0;
};

}  // namespace tarnwick
