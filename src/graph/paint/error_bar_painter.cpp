#include "graph/paint/error_bar_painter.h"

#include <algorithm>
#include <cmath>

#include <QPainter>
#include <QPainterPath>

#include "graph/paint/cloud_painter.h"
#include "graph/series.h"
#include "graph/thinning/bar_thinning.h"

namespace tarnwick {

namespace {

constexpr double kSmallestCap = 3;  // pixels on either side of the bar

QColor ColorOf(const SeriesStyle& style) {
  const Color color = style.show_symbols ? style.symbol_color : style.line_color;
  return QColor(color.Red(), color.Green(), color.Blue());
}

/// Half a cap: a little more than half a symbol, which would hide it.
double CapOf(const SeriesStyle& style) {
  const double symbol = style.show_symbols ? std::clamp(style.symbol_size, 1, 200) / 2.0 : 0;
  return std::max(kSmallestCap, symbol);
}

QPen BarPen(const SeriesStyle& style, double width) {
  QPen pen(ColorOf(style), width);
  pen.setCapStyle(Qt::FlatCap);
  return pen;
}

int Whole(double pixels) {
  return std::max(1, static_cast<int>(std::lround(pixels)));
}

/// Bars as rectangles of whole pixels.
class BarFiller {
 public:
  BarFiller(DeviceSpace& space, const QColor& color, int width, int reach)
      : space_(space), color_(color), ink_(color.rgb()), width_(width), reach_(reach) {}

  void FillUpright(const PixelBar& bar) {
    Fill({Begin(bar.at), bar.first, width_, bar.last - bar.first + 1});
    if (bar.first_capped) Fill({bar.at - reach_, bar.first, Across(), width_});
    if (bar.last_capped) Fill({bar.at - reach_, bar.last - width_ + 1, Across(), width_});
  }
  void FillLevel(const PixelBar& bar) {
    Fill({bar.first, Begin(bar.at), bar.last - bar.first + 1, width_});
    if (bar.first_capped) Fill({bar.first, bar.at - reach_, width_, Across()});
    if (bar.last_capped) Fill({bar.last - width_ + 1, bar.at - reach_, width_, Across()});
  }

 private:
  int Begin(int at) const { return at - (width_ - 1) / 2; }
  int Across() const { return 2 * reach_ + 1; }
  void Fill(const QRect& rect) {
    if (RasterSurface* const surface = space_.Surface()) {
      surface->Fill(rect, ink_);
    } else {
      space_.Painter().fillRect(rect, color_);
    }
  }

  DeviceSpace& space_;
  QColor color_;
  RasterInk ink_;
  int width_, reach_;
};

void AddLine(QPainterPath& path, QPointF from, QPointF to) {
  path.moveTo(from);
  path.lineTo(to);
}

/// Bars as lines through the middles of their cells.
void AddBar(const PixelBar& bar, int reach, Qt::Orientation orientation, QPainterPath& path) {
  const double at = bar.at + 0.5, first = bar.first + 0.5, last = bar.last + 0.5;
  const auto place = [&](double along, double across) {
    return orientation == Qt::Vertical ? QPointF(across, along) : QPointF(along, across);
  };
  AddLine(path, place(first, at), place(last, at));
  if (bar.first_capped) AddLine(path, place(first, at - reach), place(first, at + reach));
  if (bar.last_capped) AddLine(path, place(last, at - reach), place(last, at + reach));
}

PixelBars BarsOf(const DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  const BarArea area{space.Map(frame.clip).toAlignedRect(), space.Map(frame.plot).toAlignedRect(),
                     Whole(CapOf(series.Style()) * space.Scale())};
  return ThinBars(series.Points(), *series.Bars(), ViewOf(space, series, frame), area);
}

void FillBars(DeviceSpace& space, const PixelBars& bars, const SeriesStyle& style) {
  BarFiller filler(space, ColorOf(style), Whole(space.Scale()),
                   Whole(CapOf(style) * space.Scale()));
  for (const PixelBar& bar : bars.upright) filler.FillUpright(bar);
  for (const PixelBar& bar : bars.level) filler.FillLevel(bar);
}

void DrawBars(DeviceSpace& space, const PixelBars& bars, const SeriesStyle& style) {
  const int reach = Whole(CapOf(style) * space.Scale());
  QPainterPath path;  // one is written shorter than many lines
  for (const PixelBar& bar : bars.upright) AddBar(bar, reach, Qt::Vertical, path);
  for (const PixelBar& bar : bars.level) AddBar(bar, reach, Qt::Horizontal, path);
  QPainter& painter = space.Painter();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(BarPen(style, space.Scale()));
  painter.drawPath(path);
}

}  // namespace

void PaintErrorBars(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  constexpr std::size_t kManyBars = 10'000;
  if (series.Bars() == nullptr) return;
  const PixelBars bars = BarsOf(space, series, frame);
  const SeriesStyle& style = series.Style();
  if (space.Raster()) {
    FillBars(space, bars, style);
  } else if (bars.upright.size() + bars.level.size() > kManyBars) {
    PaintCloud(space, frame, ColorOf(style),
               [&](DeviceSpace& dots) { FillBars(dots, BarsOf(dots, series, frame), style); });
  } else {
    DrawBars(space, bars, style);
  }
}

void PaintErrorBarSample(QPainter& painter, const QRectF& rect, const TSeries& series) {
  const SeriesStyle& style = series.Style();
  const double cap = std::min(CapOf(style), std::min(rect.width(), rect.height()) / 2);
  const QPointF middle(std::floor(rect.center().x()) + 0.5, std::floor(rect.center().y()) + 0.5);
  const double half = std::floor(rect.height() / 2) - 1;
  QPainterPath path;
  const auto add = [&](QPointF along, QPointF across) {
    AddLine(path, middle - along, middle + along);
    AddLine(path, middle - along - across, middle - along + across);
    AddLine(path, middle + along - across, middle + along + across);
  };
  if (HasYErrors(series.Errors())) add({0, half}, {cap, 0});
  if (HasXErrors(series.Errors())) add({2 * half, 0}, {0, cap});
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(BarPen(style, 1));
  painter.drawPath(path);
  painter.restore();
}

}  // namespace tarnwick
