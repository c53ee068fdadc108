#include "graph/paint/series_painter.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include <QPainter>

#include "graph/paint/cloud_painter.h"
#include "graph/paint/curve_painter.h"
#include "graph/paint/device_space.h"
#include "graph/paint/error_bar_painter.h"
#include "graph/paint/symbol_sprite.h"
#include "graph/raster/raster_tile.h"
#include "graph/series.h"
#include "graph/thinning/arrival_cover.h"
#include "graph/thinning/arrival_thinning.h"
#include "graph/thinning/symbol_cells.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

namespace {

QColor ToQt(Color color) {
  return QColor(color.Red(), color.Green(), color.Blue());
}

// Half pixels put odd widths, whole pixels even widths onto whole device pixels.
double Crisp(double pixel, double width) {
  return std::lround(width) % 2 == 1 ? std::floor(pixel) + 0.5 : std::round(pixel);
}

void PaintLine(DeviceSpace& space, const ThinnedLine& line, const CurvePen& pen,
               const SeriesFrame& frame) {
  DrawCurve(space.Painter(), line, pen, space.Map(frame.clip),
            space.Raster() ? DenseLine::Bars : DenseLine::Polyline, space.Surface());
}

ThinnedLine ThinnedLineOf(const TSeries& series, const ThinningView& view) {
  const LinePath* const path = series.Path();
  if (path == nullptr) return ThinLine(series.Points(), view);
  return path->arrivals != nullptr ? ThinArrivals(*path->arrivals, view)
                                   : ThinLine(series.Points(), view, path->breaks);
}

/// Draws the line as the area that it covers, where it is no more than that to the eye.
bool PaintTangle(DeviceSpace& space, const TSeries& series, const ThinningView& view,
                 const CurvePen& pen, const SeriesFrame& frame) {
  const LinePath* const path = series.Path();
  if (path == nullptr || path->arrivals == nullptr || pen.style != LineStyle::Solid) return false;
  const QRect clip = space.Map(frame.clip).toAlignedRect();
  const auto cover = path->cover.Of(*path->arrivals, view, clip);
  if (cover) DrawCover(space.Painter(), *cover, pen, clip, space.Surface());
  return cover.has_value();
}

struct Bounds {
  std::optional<double> upper, lower;
};

// Corrected Y of the bound lines: as they stand, in sample standard deviations from the mean, or in percent of the mean's
// size from the mean.
Bounds BoundsOf(const TSeries& series) {
  const SeriesStyle& style = series.Style();
  double center = 0, up = style.upper_bound, down = style.lower_bound;
  if (style.bounds_mode != BoundsMode::Absolute) {
    const StatisticsRecord y = series.YStatistics();
    if (!y.mean || !y.variance || !series.XStatistics().mean) return {};
    center = series.GetBaseLine().CorrectedY(*series.XStatistics().mean, *y.mean);
    const double unit = style.bounds_mode == BoundsMode::StandardDeviations
                            ? std::sqrt(*y.variance)
                            : std::abs(center) / 100;
    up *= unit;
    down *= -unit;
  }
  Bounds bounds;
  if (style.bound_line_mode != BoundLineMode::Lower) bounds.upper = center + up;
  if (style.bound_line_mode != BoundLineMode::Upper) bounds.lower = center + down;
  return bounds;
}

void PaintBoundLines(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  const SeriesStyle& style = series.Style();
  if (style.bound_line_mode == BoundLineMode::None) return;
  const Bounds bounds = BoundsOf(series);
  const QRectF plot = space.Map(frame.plot);
  const CurvePen pen{ToQt(style.bound_line_color), space.Scale(), style.bound_line_style};
  for (const std::optional<double>& bound : {bounds.upper, bounds.lower}) {
    if (!bound) continue;
    const double y = space.MapY(frame.y).At(*bound);
    if (!(y >= plot.top() && y <= plot.bottom())) continue;
    const double level = space.Raster() ? Crisp(y, pen.width) : y;
    space.Painter().setPen(MakePen(pen));
    space.Painter().drawLine(QPointF(plot.left(), level), QPointF(plot.right(), level));
  }
}

void PaintRegression(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  if (series.RegressionType() == RegressionType::None || series.Regression().stale) return;
  ThinningView view = ViewOf(space, series, frame);
  view.ordinate = Ordinate::Regression;
  const PointChain& points =
      HasRegressionCurve(series.RegressionType()) ? series.Regression().curve : series.Points();
  const SeriesStyle& style = series.Style();
  const double width = std::clamp(style.line_width, 1, 200) * space.Scale();
  PaintLine(space, ThinLine(points, view),
            {ToQt(style.regression_line_color), width, style.regression_line_style}, frame);
}

// Between two filled symbols that near their bodies close over whatever lies between them.
SymbolHiding HidingOf(const DeviceSpace& space, const SymbolLook& look) {
  const double size = look.size * space.Scale();
  const bool filled = look.fill == SymbolFill::Filled && !IsOpenSymbol(look.shape);
  SymbolHiding hiding;
  hiding.gap = filled && look.shape != SymbolShape::Dot ? static_cast<int>(size / 3) : 1;
  if (space.Raster()) hiding.reach = static_cast<int>(std::ceil(0.6 * size)) + 1;
  return hiding;
}

SymbolPixels PixelsOf(const DeviceSpace& space, const TSeries& series, const SeriesFrame& frame,
                      const SymbolLook& look) {
  const int reach = static_cast<int>(std::ceil(look.size * space.Scale()));
  const QRect area = space.Map(frame.clip).toAlignedRect().adjusted(-reach, -reach, reach, reach);
  return OccupiedPixels(series.Points(), ViewOf(space, series, frame), area, HidingOf(space, look));
}

void PaintSprites(DeviceSpace& space, const SymbolPixels& pixels, const SymbolLook& look) {
  QPainter& painter = space.Painter();
  RasterSurface* const surface = space.Surface();
  const RasterInk ink(look.color.rgb());
  for (const QRect& rect : pixels.solid) {
    if (surface != nullptr) {
      surface->Fill(rect, ink);
    } else {
      painter.fillRect(rect, look.color);
    }
  }
  const SymbolSprite sprite = MakeSprite(look, space.Scale());
  const QPoint hot_spot(sprite.hot_spot, sprite.hot_spot);
  const RasterTile tile(sprite.image);
  for (const QPoint& pixel : pixels.symbols) {
    const QPoint corner = pixel - hot_spot;
    if (surface != nullptr && surface->Lay(corner, tile)) continue;
    painter.drawImage(corner, sprite.image);
  }
}

void PaintSymbols(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame) {
  constexpr std::size_t kManySymbols = 10'000;
  const SymbolLook look = LookOf(series.Style());
  const SymbolPixels pixels = PixelsOf(space, series, frame, look);
  QPainter& painter = space.Painter();
  painter.setRenderHint(QPainter::Antialiasing);
  if (space.Raster()) {
    PaintSprites(space, pixels, look);
  } else if (pixels.symbols.size() > kManySymbols) {
    PaintCloud(space, frame, look.color, [&](DeviceSpace& dots) {
      PaintSprites(dots, PixelsOf(dots, series, frame, look), look);
    });
  } else {
    for (const QPoint& pixel : pixels.symbols) {
      PaintSymbol(painter, QPointF(pixel) + QPointF(0.5, 0.5), look, space.Scale());
    }
  }
}

CurvePen LinePenOf(const SeriesStyle& style, double scale) {
  return {ToQt(style.line_color), std::clamp(style.line_width, 1, 200) * scale, style.line_style};
}

CurvePen ModelPenOf(const TSeries& series, double scale) {
  return {ToQt(series.ModelCurveColor()), std::clamp(series.Fit().CurveWidth(), 1, 200) * scale,
          static_cast<LineStyle>(series.Fit().CurveStyle())};
}

}  // namespace

void PaintSeries(QPainter& painter, const TSeries& series, const SeriesFrame& frame) {
  const SeriesStyle& style = series.Style();
  if (!style.visible || frame.plot.isEmpty() || frame.clip.isEmpty()) return;
  DeviceSpace space(painter, frame);
  // A DataSet of points has no body beyond its lines and symbols: drawing starts with the bound lines.
  PaintBoundLines(space, series, frame);
  if (series.Points().Empty()) return;
  PaintRegression(space, series, frame);
  if (style.connect_points) {
    CurvePen pen = LinePenOf(style, space.Scale());
    if (pen.style == LineStyle::Solid) pen.style = frame.solid_line;
    const ThinningView view = ViewOf(space, series, frame);
    if (!PaintTangle(space, series, view, pen, frame))
      PaintLine(space, ThinnedLineOf(series, view), pen, frame);
  }
  PaintErrorBars(space, series, frame);
  if (style.show_symbols) PaintSymbols(space, series, frame);
}

void PaintModelCurve(QPainter& painter, const TSeries& series, const SeriesFrame& frame) {
  if (series.Curve().Points().Empty() || frame.plot.isEmpty() || frame.clip.isEmpty()) return;
  DeviceSpace space(painter, frame);
  ThinningView view = ViewOf(space, series, frame);
  // The model was fitted to what is drawn: Y less the base line.
  view.zero_value = view.base_line_slope = 0;
  PaintLine(space, ThinLine(series.Curve().Points(), view), ModelPenOf(series, space.Scale()),
            frame);
}

void PaintModelCurveSample(QPainter& painter, const QRectF& rect, const TSeries& series) {
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  const CurvePen pen = ModelPenOf(series, 1);
  const double y = Crisp(rect.center().y(), pen.width);
  painter.setPen(MakePen(pen));
  painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y));
  painter.restore();
}

void PaintSeriesSample(QPainter& painter, const QRectF& rect, const SeriesStyle& style) {
  painter.save();
  painter.setClipRect(rect, Qt::IntersectClip);
  painter.setRenderHint(QPainter::Antialiasing);
  if (style.connect_points) {
    const CurvePen pen = LinePenOf(style, 1);
    const double y = Crisp(rect.center().y(), pen.width);
    painter.setPen(MakePen(pen));
    painter.drawLine(QPointF(rect.left(), y), QPointF(rect.right(), y));
  }
  if (style.show_symbols) {
    SymbolLook look = LookOf(style);
    look.size = std::min(look.size, std::min(rect.width(), rect.height()));
    const double y =
        style.connect_points ? Crisp(rect.center().y(), style.line_width) : rect.center().y();
    PaintSymbol(painter, QPointF(rect.center().x(), y), look);
  }
  painter.restore();
}

}  // namespace tarnwick
