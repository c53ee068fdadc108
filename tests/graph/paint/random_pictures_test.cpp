// DataSets drawn by lot in pictures of 60 x 16 pixels, told as rows of ink: points few and many, lines, symbols, bars, bounds and
// regressions on axes of every kind, within the plot and beyond it, as pixels and as vectors.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPicture>
#include <cmath>
#include <string>
#include <vector>

#include "graph/axes/axis_scale.h"
#include "graph/paint/ink.h"
#include "graph/paint/series_painter.h"
#include "graph/series.h"
#include "support/lot.h"

namespace tarnwick {
namespace {

using testing::Lot;

void DrawPoints(Lot& lot, TSeries& series) {
  const int count = lot.OneIn(2) ? 1 + lot.Of(12) : 1 + lot.Of(lot.OneIn(4) ? 40'000 : 900);
  const bool turns = lot.OneIn(3), uneven = lot.OneIn(2);
  const double noise = lot.OneIn(2) ? 0 : lot.Of(5), waves = 1 + lot.Of(9);
  std::vector<double> x, y;
  for (int i = 0; i < count; ++i) {
    const double along = (uneven ? lot.Part() + i : i) / count, angle = 6.3 * waves * along;
    x.push_back(turns ? 28 + (8 + 18 * along) * std::cos(angle) : 2 + 52 * along);
    y.push_back((turns ? 7 : 6 + 2 * along) + 5 * std::sin(angle) + noise * (lot.Part() - 0.5));
  }
  series.SetDuplicatesAllowed(turns);
  series.AddPoints(x, y);
  if (count > 6 && lot.OneIn(3)) series.SetGaps({{count / 3, count / 2, count / 2 + 1}, count - 1});
  if (lot.OneIn(3)) series.SetZeroValue(lot.Of(3)), series.SetBaseLineSlope(lot.Of(3) / 20.0);
  PointErrors errors;
  const auto rule = [&]() -> ErrorRule {
    if (!lot.OneIn(4)) return {};
    return {static_cast<ErrorKind>(2 + lot.Of(2)), lot.Of(4) + 0.5};
  };
  errors.x = rule(), errors.y = lot.OneIn(9) ? ErrorRule{ErrorKind::Counts, 0} : rule();
  series.SetErrors(errors);
  if (lot.OneIn(4)) {
    series.SetRegressionType(static_cast<RegressionType>(1 + lot.Of(7)));
    series.UpdateRegression();
  }
}

SeriesStyle DrawStyle(Lot& lot) {
  SeriesStyle style;
  const auto shade = [&] { return Color::FromRgb(0, static_cast<std::uint8_t>(lot.Of(160)), 0); };
  style.connect_points = !lot.OneIn(4), style.show_symbols = lot.OneIn(2);
  style.fill_symbols = !lot.OneIn(3), style.symbol = static_cast<SymbolShape>(lot.Of(9));
  style.symbol_size = 1 + lot.Of(11), style.line_width = lot.OneIn(2) ? 1 : 1 + lot.Of(4);
  style.line_style = lot.OneIn(3) ? static_cast<LineStyle>(lot.Of(6)) : LineStyle::Solid;
  style.line_order = lot.OneIn(2) ? LineOrder::AsTheyCame : LineOrder::ByX;
  style.line_color = shade(), style.symbol_color = shade();
  style.bound_line_mode = static_cast<BoundLineMode>(lot.OneIn(3) ? lot.Of(4) : 0);
  style.bounds_mode = static_cast<BoundsMode>(lot.Of(3));
  const double unit = style.bounds_mode == BoundsMode::PercentOfMean ? 20 : 1;
  style.upper_bound = unit * lot.Of(12), style.lower_bound = unit * lot.Of(3);
  return style;
}

AxisScale DrawScale(Lot& lot, AxisId id, const QRectF& plot) {
  AxisState axis;
  const double most = id == AxisId::X ? 56 : 14;
  axis.LogScale = lot.OneIn(4);
  axis.Min = lot.OneIn(2) ? (axis.LogScale ? 0.5 : 0) : (0.1 + 0.4 * lot.Part()) * most;
  axis.Max = lot.OneIn(2) ? most : axis.Min + (0.05 + lot.Part()) * most;
  return ScaleOf(axis, id, id == AxisId::X ? plot.left() : plot.top(),
                 PixelsPerUnit(axis, id == AxisId::X ? plot.width() : plot.height()));
}

std::vector<std::string> Picture(unsigned seed) {
  Lot lot(seed);
  TSeries series;
  DrawPoints(lot, series);
  series.SetStyle(DrawStyle(lot));
  const double zoom = lot.OneIn(3) ? 1.5 : 1;
  SeriesFrame frame;
  frame.plot = frame.clip = QRectF(2, 1, 56 / zoom - 1, 14 / zoom - 1);
  if (lot.OneIn(4)) frame.plot = frame.clip.adjusted(6, 2, -6, -2);
  frame.x = DrawScale(lot, AxisId::X, frame.plot), frame.y = DrawScale(lot, AxisId::Y, frame.plot);
  QImage image(60, 16, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPicture vectors;
  const bool as_vectors = lot.OneIn(3);
  QPainter painter(as_vectors ? static_cast<QPaintDevice*>(&vectors) : &image);
  if (lot.OneIn(5)) painter.setClipRect(QRect(0, 0, 60, 16));  // then nothing goes past the painter
  painter.scale(zoom, zoom);
  PaintSeries(painter, series, frame);
  painter.end();
  if (as_vectors) QPainter(&image).drawPicture(0, 0, vectors);
  return testing::InkOf(image);
}

TEST(RandomPictures, AreThoseThatWereLookedAt) {
  // Of five hundred those in which most parts of the painting tell.
  for (const unsigned seed :
       {7U,   8U,   16U,  17U,  32U,  50U,  56U,  58U,  67U,  127U, 140U, 149U, 154U, 168U, 183U,
        189U, 231U, 233U, 238U, 279U, 282U, 287U, 327U, 338U, 341U, 374U, 413U, 421U, 437U, 451U}) {
    testing::ExpectTold("graph/paint/random_pictures.txt", std::to_string(seed), Picture(seed),
                        testing::IsSameInk);
  }
}

}  // namespace
}  // namespace tarnwick
