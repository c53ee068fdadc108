// DataSets drawn in pictures of 60 x 16 pixels, told as rows of ink: a picture that changed is seen for what it is.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QPicture>
#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "graph/axes/axis_scale.h"
#include "graph/axes/axis_state.h"
#include "graph/paint/error_bar_painter.h"
#include "graph/paint/ink.h"
#include "graph/paint/series_painter.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

constexpr int kWidth = 60;
constexpr int kHeight = 16;
const QRectF kPlot(2, 1, 56, 14);

/// Numbers from -1 to 1 that are the same in every run.
class Noise {
 public:
  double Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<double>(state_ >> 11) * 0x1p-52 - 1;
  }

 private:
  std::uint64_t state_ = 17;
};

QImage Blank(int width = kWidth, int height = kHeight) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(Qt::white);
  return image;
}

void ExpectPicture(const std::string& name, const std::vector<std::string>& told) {
  testing::ExpectTold("graph/paint/pictures.txt", name, told, testing::IsSameInk);
}

enum class Draw { Pixels, Vectors };

std::vector<std::string> Told(const std::function<void(QPainter&)>& draw, Draw how) {
  QImage image = Blank();
  QPicture picture;
  if (how == Draw::Vectors) {
    QPainter recorder(&picture);
    draw(recorder);
  }
  QPainter painter(&image);
  how == Draw::Vectors ? painter.drawPicture(0, 0, picture) : draw(painter);
  painter.end();
  return testing::InkOf(image);
}

AxisScale Scale(AxisId id, double min, double max, bool log) {
  AxisState axis;
  axis.Min = min, axis.Max = max, axis.LogScale = log;
  const bool across = id == AxisId::X;
  return ScaleOf(axis, id, across ? kPlot.left() : kPlot.top(),
                 PixelsPerUnit(axis, across ? kPlot.width() : kPlot.height()));
}

struct Ranges {
  double x_min = 0, x_max = 56, y_min = 0, y_max = 14;
  bool log_x = false, log_y = false;
};

struct Drawn {
  const char* name;
  std::function<void(TSeries&)> fill;
  SeriesStyle style;
  Ranges ranges;
  Draw how = Draw::Pixels;
};

SeriesFrame FrameOf(const Ranges& ranges) {
  SeriesFrame frame;
  frame.x = Scale(AxisId::X, ranges.x_min, ranges.x_max, ranges.log_x);
  frame.y = Scale(AxisId::Y, ranges.y_min, ranges.y_max, ranges.log_y);
  frame.plot = frame.clip = kPlot;
  return frame;
}

void Few(TSeries& series) {
  const double y[] = {2, 12, 7, 7, 1, 13, 16, -3, 6};
  for (int i = 0; i < 9; ++i) series.AddPoint(3 + 6 * i, y[i]);
}

/// A walk in noise, `count` points wide.
std::function<void(TSeries&)> Many(int count, double noise) {
  return [=](TSeries& series) {
    Noise draws;
    std::vector<double> x, y;
    for (int i = 0; i < count; ++i) {
      x.push_back(56.0 * i / count);
      y.push_back(7 + 4 * std::sin(x.back() / 7) + noise * draws.Next());
    }
    series.AddPoints(x, y);
  };
}

/// Rings around the middle, in the order in which they came.
std::function<void(TSeries&)> Rings(int count) {
  return [=](TSeries& series) {
    series.SetDuplicatesAllowed(true);
    for (int i = 0; i < count; ++i) {
      const double angle = 0.1 * i;
      series.AddPoint(28 + (5 + 20.0 * i / count) * std::cos(angle), 7 + 6 * std::sin(angle));
    }
  };
}

std::function<void(TSeries&)> With(const std::function<void(TSeries&)>& fill, ErrorRule y,
                                   ErrorRule x) {
  return [=](TSeries& series) {
    fill(series);
    PointErrors errors;
    errors.y = y, errors.x = x;
    series.SetErrors(errors);
  };
}

SeriesStyle Line(int width = 1, LineStyle style = LineStyle::Solid) {
  SeriesStyle look;
  look.show_symbols = false;
  look.line_width = width, look.line_style = style;
  return look;
}

SeriesStyle Symbols(SymbolShape shape, int size, bool filled) {
  SeriesStyle look;
  look.connect_points = false;
  look.symbol = shape, look.symbol_size = size, look.fill_symbols = filled;
  return look;
}

SeriesStyle AsTheyCame(SeriesStyle style) {
  style.line_order = LineOrder::AsTheyCame;
  return style;
}

void ExpectPictures(const std::vector<Drawn>& pictures) {
  for (const Drawn& drawn : pictures) {
    TSeries series;
    drawn.fill(series);
    series.SetStyle(drawn.style);
    const auto draw = [&](QPainter& painter) {
      PaintSeries(painter, series, FrameOf(drawn.ranges));
    };
    ExpectPicture(drawn.name, Told(draw, drawn.how));
  }
}

const Ranges kNear{10, 30, 4, 10};
const Ranges kLog{0.5, 100, 0.5, 20, true, true};

TEST(SmallPictures, LinesOfFewPoints) {
  ExpectPictures({{"line", Few, Line(), {}},
                  {"line, two wide", Few, Line(2), {}},
                  {"line, five wide", Few, Line(5), {}},
                  {"dashes", Few, Line(1, LineStyle::Dash), {}},
                  {"line on logarithmic axes", Few, Line(), kLog},
                  {"line as vectors", Few, Line(2), {}, Draw::Vectors},
                  {"rings within", Rings(60), AsTheyCame(Line()), kNear}});
}

TEST(SmallPictures, LinesOfManyPoints) {
  ExpectPictures({{"walk", Many(4000, 0), Line(), {}},
                  {"noise", Many(4000, 2), Line(), {}},
                  {"noise within", Many(4000, 2), Line(), kNear},
                  {"noise on logarithmic axes", Many(4000, 2), Line(), kLog},
                  {"noise as vectors", Many(4000, 2), Line(), {}, Draw::Vectors},
                  {"tangle of rings within", Rings(40'000), AsTheyCame(Line()), kNear}});
}

TEST(SmallPictures, Symbols) {
  std::vector<Drawn> pictures;
  const char* const names[] = {"circle", "square", "diamond", "up",          "down",       "plus",
                               "cross",  "star",   "dot",     "open circle", "open square"};
  for (int shape = 0; shape < 11; ++shape)
    pictures.push_back(
        {names[shape], Few, Symbols(static_cast<SymbolShape>(shape % 9), 7, shape < 9), {}});
  pictures.push_back({"large squares", Few, Symbols(SymbolShape::Square, 13, true), {}});
  pictures.push_back(
      {"circles as vectors", Few, Symbols(SymbolShape::Circle, 7, true), {}, Draw::Vectors});
  pictures.push_back({"many circles", Many(3000, 3), Symbols(SymbolShape::Circle, 5, true), {}});
  pictures.push_back({"many circles as vectors",
                      Many(40'000, 3),
                      Symbols(SymbolShape::Circle, 3, true),
                      {},
                      Draw::Vectors});
  ExpectPictures(pictures);
}

TEST(SmallPictures, ErrorBars) {
  const ErrorRule none, two{ErrorKind::Constant, 2}, share{ErrorKind::Percent, 20},
      counts{ErrorKind::Counts, 0};
  const SeriesStyle dots = Symbols(SymbolShape::Dot, 3, true);
  const SeriesStyle wide = Symbols(SymbolShape::Circle, 11, false);
  ExpectPictures(
      {{"bars of Y", With(Few, two, none), dots, {}},
       {"bars of both", With(Few, share, share), wide, {}},
       {"bars of counts", With(Few, counts, none), Line(), {}},
       {"bars within", With(Few, two, two), dots, kNear},
       {"bars on logarithmic axes", With(Few, two, two), dots, kLog},
       {"bars as vectors", With(Few, two, two), dots, {}, Draw::Vectors},
       {"many bars of Y", With(Many(900, 3), two, none), dots, {}},
       {"many bars within", With(Many(900, 3), two, two), dots, kNear},
       {"many bars on logarithmic axes", With(Many(900, 3), two, two), dots, kLog},
       {"many bars as vectors", With(Many(30'000, 3), share, none), dots, {}, Draw::Vectors}});
}

TEST(SmallPictures, BoundsAndRegressions) {
  SeriesStyle bounds = Line();
  bounds.bound_line_mode = BoundLineMode::Both;
  bounds.upper_bound = 10, bounds.lower_bound = 3;
  SeriesStyle deviations = bounds;
  deviations.bounds_mode = BoundsMode::StandardDeviations;
  deviations.upper_bound = 0.5, deviations.lower_bound = 0.25;
  SeriesStyle percent = deviations;
  percent.bounds_mode = BoundsMode::PercentOfMean;
  percent.upper_bound = 40, percent.lower_bound = 60;
  percent.bound_line_mode = BoundLineMode::Lower;
  percent.bound_line_style = LineStyle::Solid;
  const auto regressed = [](RegressionType type) {
    return [type](TSeries& series) {
      Few(series);
      series.SetZeroValue(1);
      series.SetBaseLineSlope(0.05);
      series.SetRegressionType(type);
      series.UpdateRegression();
    };
  };
  SeriesStyle dots = Symbols(SymbolShape::Dot, 3, true);
  dots.line_width = 2;
  ExpectPictures({{"bounds", Few, bounds, {}},
                  {"lower bound in percent", Few, percent, {}},
                  {"regression", regressed(RegressionType::Parabola), dots, {}},
                  {"spline", regressed(RegressionType::Spline), dots, {}},
                  {"regression on logarithmic axes", regressed(RegressionType::Line), dots, kLog}});
}

TEST(SmallPictures, SamplesForTheLegend) {
  const ErrorRule one{ErrorKind::Constant, 1}, none;
  SeriesStyle both;
  both.symbol = SymbolShape::Square, both.symbol_size = 40;
  std::vector<std::string> rows;
  const QRectF rects[] = {{2, 1, 28, 14}, {33, 2, 13, 9}, {49, 3, 10, 11}};
  const auto samples = [&](const SeriesStyle& style, ErrorRule y, ErrorRule x) {
    TSeries series;
    With(Few, y, x)(series);
    series.SetStyle(style);
    return Told(
        [&](QPainter& painter) {
          for (const QRectF& rect : rects) {
            PaintErrorBarSample(painter, rect, series);
            PaintSeriesSample(painter, rect, style);
          }
        },
        Draw::Pixels);
  };
  ExpectPicture("samples of lines", samples(Line(2), none, none));
  ExpectPicture("samples of both", samples(both, none, none));
  ExpectPicture("samples with bars of Y", samples(Symbols(SymbolShape::Dot, 3, true), one, none));
  ExpectPicture("samples with bars of both",
                samples(Symbols(SymbolShape::Circle, 5, false), one, one));
}

}  // namespace
}  // namespace tarnwick
