#include "graph/paint/series_painter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include <QImage>
#include <QList>
#include <QPaintEngine>
#include <QPainter>

#include "graph/paint/curve_painter.h"
#include "graph/paint/symbol_sprite.h"
#include "graph/raster/raster_surface.h"
#include "graph/raster/raster_tile.h"
#include "graph/series.h"
#include "graph/thinning/arrival_thinning.h"
#include "graph/thinning/symbol_cells.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

namespace {

constexpr double kVectorPixels = 4;  // cells a logical pixel that a vector device is given

QColor ToQt(Color color) {
  return QColor(color.Red(), color.Green(), color.Blue());
}

// The painter with one unit for each cell that points are thinned by: the device pixel, or a fine grid on a vector device.
class DeviceSpace {
 public:
  DeviceSpace(QPainter& painter, const SeriesFrame& frame) : painter_(painter) {
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
  ~DeviceSpace() { painter_.restore(); }
  DeviceSpace(const DeviceSpace&) = delete;
  DeviceSpace& operator=(const DeviceSpace&) = delete;

  QPainter& Painter() { return painter_; }
  bool Raster() const { return raster_; }
  RasterSurface* Surface() { return surface_ ? &*surface_ : nullptr; }
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

constexpr double kCloudDotsPerPixel = 3;  // about 300 dots an inch

QImage CloudImage(const TSeries& series, const SeriesFrame& frame, const SymbolLook& look) {
  const QSize size = (frame.clip.size() * kCloudDotsPerPixel).toSize().expandedTo(QSize(1, 1));
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  if (image.isNull()) return image;
  image.fill(Qt::transparent);
  {
    QPainter painter(&image);
    painter.scale(size.width() / frame.clip.width(), size.height() / frame.clip.height());
    painter.translate(-frame.clip.topLeft());
    DeviceSpace dots(painter, frame);
    PaintSprites(dots, PixelsOf(dots, series, frame, look), look);
  }
  return image;
}

// The covered dots of an image, row by row.
class CoveredRows {
 public:
  explicit CoveredRows(const QImage& image) : rows_(static_cast<std::size_t>(image.height())) {
    constexpr int kCovered = 128;
    for (int y = 0; y < image.height(); ++y) {
      const auto* const row = reinterpret_cast<const QRgb*>(image.constScanLine(y));
      for (int x = 0; x < image.width(); ++x) {
        if (qAlpha(row[x]) < kCovered) continue;
        const int first = x;
        while (x < image.width() && qAlpha(row[x]) >= kCovered) ++x;
        rows_[static_cast<std::size_t>(y)].push_back({first, x});
      }
    }
  }

  // Rectangles that cover the same dots. They overlap, so that no viewer shows seams between them.
  QList<QRectF> Rectangles() const {
    constexpr int kOverlap = 12;
    const int count = static_cast<int>(rows_.size());
    QList<QRectF> rectangles;
    for (int y = 0; y < count; ++y) {
      for (const Run& run : rows_[static_cast<std::size_t>(y)]) {
        if (Around(run, y - 1) == run) continue;  // part of the rectangle that began there
        int top = y;
        int bottom = y;
        while (Around(run, bottom + 1) == run) ++bottom;
        for (int i = 0; i < kOverlap && Around(run, top - 1); ++i) --top;
        for (int i = 0; i < kOverlap && Around(run, bottom + 1); ++i) ++bottom;
        rectangles << QRectF(run.first, top - 0.5, run.end - run.first, bottom + 2 - top);
      }
    }
    return rectangles;
  }

 private:
  struct Run {
    int first;
    int end;
    bool operator==(const Run&) const = default;
  };

  // The run of row `y` that holds all of `run`.
  std::optional<Run> Around(const Run& run, int y) const {
    if (y < 0 || std::cmp_greater_equal(y, rows_.size())) return std::nullopt;
    const std::vector<Run>& row = rows_[static_cast<std::size_t>(y)];
    const auto after = std::upper_bound(row.begin(), row.end(), run.first,
                                        [](int x, const Run& other) { return x < other.first; });
    if (after == row.begin() || (after - 1)->end < run.end) return std::nullopt;
    return *(after - 1);
  }

  std::vector<std::vector<Run>> rows_;
};

bool TakesImages(const QPainter& painter) {
  const QPaintEngine* const engine = painter.paintEngine();
  return engine != nullptr &&
         (engine->type() == QPaintEngine::Pdf || engine->type() == QPaintEngine::SVG);
}

// Symbols in such numbers are a cloud: a picture file takes them as one image, a metafile, which has no transparency, as the
// area that they cover.
void PaintCloud(DeviceSpace& space, const TSeries& series, const SeriesFrame& frame,
                const SymbolLook& look) {
  const QImage image = CloudImage(series, frame, look);
  if (image.isNull()) return;
  QPainter& painter = space.Painter();
  const QRectF place = space.Map(frame.clip);
  if (TakesImages(painter)) {
    painter.setRenderHint(QPainter::LosslessImageRendering);
    painter.drawImage(place, image);
    return;
  }
  painter.save();
  painter.translate(place.topLeft());
  painter.scale(place.width() / image.width(), place.height() / image.height());
  painter.setPen(Qt::NoPen);
  painter.setBrush(look.color);
  painter.drawRects(CoveredRows(image).Rectangles());
  painter.restore();
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
    PaintCloud(space, series, frame, look);
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
    PaintLine(space, ThinnedLineOf(series, ViewOf(space, series, frame)), pen, frame);
  }
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
