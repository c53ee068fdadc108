#include "graph/paint/series_painter.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>

#include "graph/paint/symbol_sprite.h"
#include "graph/palette.h"
#include "graph/pictures/fast_png.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;
const QRectF kPlot(20, 10, 250, 170);

SeriesFrame Frame(double x_min, double x_max, double y_min, double y_max) {
  SeriesFrame frame;
  frame.x = {x_min,        x_max, kPlot.width() / (x_max - x_min),
             kPlot.left(), false, PixelDirection::Rightward};
  frame.y = {y_min,       y_max, kPlot.height() / (y_max - y_min),
             kPlot.top(), false, PixelDirection::Upward};
  frame.plot = frame.clip = kPlot;
  return frame;
}

SeriesStyle LineStyleOf(int width) {
  SeriesStyle style;
  style.show_symbols = false;
  style.line_width = width;
  return style;
}

QImage Blank(double ratio = 1) {
  QImage image(QSize(kWidth, kHeight) * ratio, QImage::Format_RGB32);
  image.setDevicePixelRatio(ratio);
  image.fill(Qt::white);
  return image;
}

QImage Painted(const TSeries& series, const SeriesFrame& frame, double ratio = 1) {
  QImage image = Blank(ratio);
  QPainter painter(&image);
  PaintSeries(painter, series, frame);
  return image;
}

int Ink(const QImage& image, int x, int y) {
  return 255 - qGray(image.pixel(x, y));
}

double TotalInk(const QImage& image, const QRect& area) {
  double sum = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) sum += Ink(image, x, y);
  }
  return sum / 255;
}

struct Shape {
  const char* name;
  std::size_t points;
  double step;   // random step of a walk
  double noise;  // around it
  int width;
};

// Compared with a plain anti-aliased stroke through all points. A stroke through noise leaves its fringe in shades that a bar
// cannot know; hence the share of clearly different pixels is bounded, not their number.
TEST(PaintSeries, ThinnedPictureLooksLikeTheWholeLine) {
  const Shape kShapes[] = {{"sparse walk", 200, 0.1, 0, 1},
                           {"walk", 20'000, 0.01, 0, 1},
                           {"walk, two wide", 20'000, 0.01, 0, 2},
                           {"smooth", 20'000, 0, 0, 2},
                           {"noise", 5'000, 0, 0.5, 1},
                           {"noise, two wide", 5'000, 0, 0.5, 2},
                           {"noise, five wide", 5'000, 0, 0.5, 5}};
  for (const Shape& shape : kShapes) {
    SCOPED_TRACE(shape.name);
    std::mt19937_64 random(5);
    std::normal_distribution<double> normal(0, 1);
    TSeries series;
    QPolygonF whole;
    const SeriesFrame frame = Frame(0, 1, -3, 3);
    double walk = 0;
    for (std::size_t i = 0; i < shape.points; ++i) {
      const double x = static_cast<double>(i) / static_cast<double>(shape.points);
      walk += shape.step * normal(random);
      const double y = walk + std::sin(6 * x) + shape.noise * normal(random);
      series.AddPoint(x, y);
      whole.append({frame.x.Position(x), frame.y.Position(y)});
    }
    series.SetStyle(LineStyleOf(shape.width));
    const QImage ours = Painted(series, frame);
    QImage reference = Blank();
    QPainter painter(&reference);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setClipRect(kPlot);
    painter.setPen(QPen(Qt::black, shape.width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(whole);
    painter.end();

    int inked = 0, different = 0;
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kWidth; ++x) {
        inked += Ink(reference, x, y) > 0;
        different += std::abs(Ink(reference, x, y) - Ink(ours, x, y)) > 128;
      }
    }
    EXPECT_LT(different, (shape.noise == 0 ? 0.08 : 0.025) * inked);
    EXPECT_NEAR(TotalInk(ours, ours.rect()) / TotalInk(reference, reference.rect()), 1, 0.11);
  }
}

TEST(PaintSeries, NothingLeavesTheClip) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  const double kWild[] = {1e300, -1e300, 0, kNan, kInfinity, -kInfinity, 0.5, 5, kNan, -4, 1e-300};
  for (const double ratio : {1.0, 1.5, 2.0}) {
    for (const int points : {11, 5'000}) {
      TSeries series;
      for (int i = 0; i < points; ++i) {
        series.AddPoint(2.0 * i / points - 0.5, kWild[i % std::size(kWild)]);
      }
      series.AddPoint(kInfinity, 0);
      series.AddPoint(-kInfinity, 1);
      SeriesStyle style = LineStyleOf(5);
      style.show_symbols = true;
      style.symbol_size = 15;
      style.bound_line_mode = BoundLineMode::Both;
      style.upper_bound = 1e300;
      style.lower_bound = -1;
      series.SetStyle(style);
      QImage image = Painted(series, Frame(0, 1, -3, 3), ratio);
      EXPECT_GT(TotalInk(image, image.rect()), 100);
      image.setDevicePixelRatio(1);
      QPainter painter(&image);
      painter.fillRect(QTransform::fromScale(ratio, ratio).mapRect(kPlot).toAlignedRect(),
                       Qt::white);
      painter.end();
      EXPECT_EQ(TotalInk(image, image.rect()), 0) << ratio << ' ' << points;
    }
  }
}

TEST(PaintSeries, SymbolsSitOnTheirPointsAndDiffer) {
  std::set<std::string> pictures;
  for (int shape = 0; shape <= 8; ++shape) {
    for (const bool filled : {true, false}) {
      TSeries series;
      series.AddPoint(0.5, 0);
      SeriesStyle style;
      style.symbol = static_cast<SymbolShape>(shape);
      style.fill_symbols = filled;
      style.symbol_size = 11;
      series.SetStyle(style);
      const QImage image = Painted(series, Frame(0, 1, -1, 1));
      const QPoint center(145, 95);
      const double ink = TotalInk(image, image.rect());
      EXPECT_GT(ink, 8) << shape;
      EXPECT_EQ(TotalInk(image, QRect(center - QPoint(8, 8), QSize(17, 17))), ink) << shape;
      EXPECT_NEAR(TotalInk(image, QRect(center - QPoint(8, 8), QSize(8, 17))),
                  TotalInk(image, QRect(center + QPoint(1, -8), QSize(8, 17))), 0.02 * ink)
          << shape;
      pictures.emplace(reinterpret_cast<const char*>(image.constBits()),
                       static_cast<std::size_t>(image.sizeInBytes()));
    }
  }
  EXPECT_EQ(pictures.size(), 9u + 5u);  // plus, cross, star and dot cannot be filled
}

TEST(PaintSeriesSample, HoldsTheSymbolInItsRectangle) {
  const struct {
    int size;
    QRectF place;
    int side;  // of the symbol that is seen
  } rows[] = {{5, {100, 50, 60, 21}, 5}, {30, {100, 50, 60, 11}, 11}, {30, {100, 50, 9, 21}, 9}};
  for (const auto& row : rows) {
    SeriesStyle style;
    style.connect_points = false;
    style.symbol = SymbolShape::Square;
    style.symbol_size = row.size;
    QImage image = Blank();
    QPainter painter(&image);
    PaintSeriesSample(painter, row.place, style);
    QRect painted;
    for (int y = 0; y < kHeight; ++y)
      for (int x = 0; x < kWidth; ++x)
        if (Ink(image, x, y) > 0) painted |= QRect(x, y, 1, 1);
    EXPECT_NEAR(painted.width(), row.side, 2) << row.size;
    EXPECT_NEAR(painted.height(), row.side, 2) << row.size;
    EXPECT_NEAR(QRectF(painted).center().x(), row.place.center().x(), 1) << row.size;
    EXPECT_NEAR(QRectF(painted).center().y(), row.place.center().y(), 1) << row.size;
  }
}

struct BoundRow {
  BoundsMode mode;
  BoundLineMode lines;
  double upper, lower;
  std::vector<double> levels;
};

// Y values 1, 2, 3, 4 less the base line 1: mean 1.5, sample standard deviation 1.29.
TEST(PaintSeries, BoundLinesStandAtTheirLevels) {
  const double sd = std::sqrt(5.0 / 3);
  const BoundRow kRows[] = {
      {BoundsMode::Absolute, BoundLineMode::Both, 2.5, -1, {2.5, -1}},
      {BoundsMode::Absolute, BoundLineMode::Upper, 2.5, -1, {2.5}},
      {BoundsMode::StandardDeviations, BoundLineMode::Lower, 1, 2, {1.5 - 2 * sd}},
      {BoundsMode::PercentOfMean, BoundLineMode::Both, 10, 50, {1.65, 0.75}},
      {BoundsMode::Absolute, BoundLineMode::None, 2.5, -1, {}},
      {BoundsMode::Absolute, BoundLineMode::Both, 3, -2.99, {3, -2.99}},  // at the plot's edge
      {BoundsMode::Absolute, BoundLineMode::Both, 3.01, -1, {-1}},
  };
  for (const BoundRow& row : kRows) {
    TSeries series;
    for (const int i : {1, 2, 3, 4}) series.AddPoint(i, i);
    series.SetZeroValue(1);
    SeriesStyle style = LineStyleOf(1);
    style.connect_points = false;
    style.bounds_mode = row.mode;
    style.bound_line_mode = row.lines;
    style.bound_line_style = LineStyle::Solid;
    style.upper_bound = row.upper;
    style.lower_bound = row.lower;
    series.SetStyle(style);
    const SeriesFrame frame = Frame(0, 5, -3, 3);
    const QImage image = Painted(series, frame);
    for (const double level : row.levels) {
      const double y = frame.y.Position(level);
      EXPECT_GT(Ink(image, 150, static_cast<int>(std::floor(y))), 120) << level;
    }
    const double gray = 127.0 / 255;
    EXPECT_NEAR(TotalInk(image, image.rect()),
                static_cast<double>(row.levels.size()) * kPlot.width() * gray, 2);
  }
}

TEST(PaintSeries, RegressionLineIsDrawnWhenItIsUpToDate) {
  TSeries series;
  for (int i = 0; i < 50; ++i) series.AddPoint(i, i % 2);
  SeriesStyle style = LineStyleOf(1);
  style.connect_points = false;
  style.regression_line_color = Color{};
  series.SetStyle(style);
  const SeriesFrame frame = Frame(0, 50, -3, 3);
  series.SetRegressionSteps(5);
  for (const RegressionType type : {RegressionType::Line, RegressionType::Smoother}) {
    SCOPED_TRACE(static_cast<int>(type));
    series.SetRegressionType(type);
    EXPECT_EQ(TotalInk(Painted(series, frame), QRect(0, 0, kWidth, kHeight)), 0);
    series.UpdateRegression();
    const QImage image = Painted(series, frame);
    const double y = frame.y.Position(0.5);
    EXPECT_GT(TotalInk(image, QRect(150, static_cast<int>(y) - 4, 1, 9)), 0.8);
  }
}

TEST(PaintSeries, CrowdedSymbolsLookAsDrawnOneByOne) {
  const SeriesFrame frame = Frame(0, 100'000, -5, 5);
  TSeries series;
  std::mt19937_64 random(2);
  std::normal_distribution<double> normal(0, 1);
  for (int i = 0; i < 100'000; ++i) series.AddPoint(i, normal(random));
  for (const SymbolShape shape : {SymbolShape::Circle, SymbolShape::Square, SymbolShape::Diamond,
                                  SymbolShape::TriangleUp, SymbolShape::TriangleDown}) {
    for (const int size : {6, 10, 25}) {
      SeriesStyle style = LineStyleOf(1);
      style.connect_points = false;
      style.show_symbols = true;
      style.symbol = shape;
      style.symbol_size = size;
      series.SetStyle(style);
      QImage expected = Blank();
      QPainter painter(&expected);
      painter.setClipRect(kPlot);
      const SymbolSprite sprite = MakeSprite(LookOf(style), 1);
      std::set<std::pair<int, int>> drawn;
      series.Points().ForEachPoint([&](double x, double y) {
        const QPoint pixel(static_cast<int>(kPlot.left() + x * frame.x.pixels_per_unit),
                           static_cast<int>(kPlot.bottom() - (y + 5) * frame.y.pixels_per_unit));
        if (!drawn.emplace(pixel.x(), pixel.y()).second) return;
        painter.drawImage(pixel - QPoint(sprite.hot_spot, sprite.hot_spot), sprite.image);
      });
      painter.end();
      const QImage image = Painted(series, frame);
      int worst = 0;
      for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
          worst = std::max(worst, std::abs(Ink(image, x, y) - Ink(expected, x, y)));
        }
      }
      EXPECT_LE(worst, 1) << static_cast<int>(shape) << ' ' << size;
    }
  }
}

// The point at (5, 5) with an error of 2 in Y, 1 in X: 25 pixels a unit of X, 17 of Y.
TEST(PaintSeries, ErrorBarsReachFromEndToEndWithCaps) {
  // The point stands at (5, 5), wherever its base line is.
  const struct { double ratio, zero; } rows[] = {{1, 0}, {2, 0}, {1, 100}, {1, -100}};
  for (const auto& row : rows) {
    const double ratio = row.ratio, zero = row.zero;
    TSeries series;
    series.AddPoint(5, 5 + zero);
    series.SetZeroValue(zero);
    SeriesStyle style = LineStyleOf(1);
    style.line_color = Color::FromRgb(0, 0, 0);
    series.SetStyle(style);
    series.SetErrors({{ErrorKind::Constant, 2}, {ErrorKind::Constant, 1}, {}, {}});
    const QImage image = Painted(series, Frame(0, 10, 0, 10), ratio);
    const auto at = [&](double x, double y) {
      return Ink(image, static_cast<int>(x * ratio), static_cast<int>(y * ratio)) > 200;
    };
    for (const double end : {95.0 - 34, 95.0 + 34}) {
      EXPECT_TRUE(at(145, end) && at(145 - 3, end) && at(145 + 3, end)) << end;
      EXPECT_FALSE(at(145 - 5, end) || at(145 + 5, end)) << end;
      EXPECT_FALSE(at(145, end + (end < 95 ? -2 : 2))) << end;
    }
    for (const double end : {145.0 - 25, 145.0 + 25}) {
      EXPECT_TRUE(at(end, 95) && at(end, 95 - 3) && at(end, 95 + 3)) << end;
      EXPECT_FALSE(at(end, 95 - 5) || at(end + (end < 145 ? -2 : 2), 95)) << end;
    }
    EXPECT_TRUE(at(145, 80) && at(145, 110) && at(130, 95) && at(160, 95));
    // Clipped, and drawn from a point that is not seen.
    const QImage beyond = Painted(series, Frame(0, 10, 6, 16), ratio);
    EXPECT_GT(TotalInk(beyond, beyond.rect()), 10 * ratio * ratio);
    const QRect plot = QTransform::fromScale(ratio, ratio).mapRect(kPlot.toRect());
    EXPECT_EQ(TotalInk(beyond, plot), TotalInk(beyond, beyond.rect()));
  }
}

TEST(PaintSeries, VectorPicturesStaySmall) {
  for (const bool symbols : {false, true}) {
    TSeries series;
    std::mt19937_64 random(1);
    std::normal_distribution<double> normal(0, 1);
    for (int i = 0; i < 200'000; ++i) series.AddPoint(i, normal(random));
    SeriesStyle style = LineStyleOf(1);
    style.connect_points = !symbols;
    style.show_symbols = symbols;
    series.SetStyle(style);
    series.SetErrors({{ErrorKind::Constant, 0.01}, {}, {}, {}});
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    {
      QPdfWriter writer(&buffer);
      QPainter painter(&writer);
      PaintSeries(painter, series, Frame(0, 200'000, -5, 5));
    }
    EXPECT_GT(buffer.size(), 2'000);
    EXPECT_LT(buffer.size(), 120'000);
  }
}

TEST(EncodePng, KeepsPixelsAndResolution) {
  for (const int colors : {2, 200, 5'000}) {
    for (const QImage::Format format : {QImage::Format_RGB32, QImage::Format_ARGB32}) {
      QImage image(97, 61, format);
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
          const int number = (x + 97 * y) % colors;
          image.setPixel(x, y, qRgba(number & 255, number >> 8, 7, 255 - number % 3));
        }
      }
      image.setDotsPerMeterX(11811);
      image.setDotsPerMeterY(11811);
      const std::string bytes = EncodePng(image);
      const QImage read =
          QImage::fromData(QByteArray::fromStdString(bytes), "PNG").convertToFormat(format);
      EXPECT_EQ(read, image) << colors;
      EXPECT_EQ(read.dotsPerMeterX(), 11811);
    }
  }
  EXPECT_ANY_THROW(EncodePng(QImage()));
}

}  // namespace
}  // namespace tarnwick
