#include "graph/thinning/bar_thinning.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <utility>

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

using Pixels = std::set<std::pair<int, int>>;
const QRect kSeen(3, 2, 90, 70);
const QRect kPlot(3, 2, 90, 60);
constexpr int kReach = 3;

struct Case {
  std::size_t points;
  bool log;
  double slope;            // of the base line
  bool same_of_x = false;  // errors, and no point without one
};

ThinningView View(const Case& row) {
  const auto points = static_cast<double>(row.points);
  const AxisScale x{0, points, 100 / points, 0, false, PixelDirection::Rightward};
  const AxisScale y = row.log
                          ? AxisScale{0.1, 10, 80 / std::log(100), 0, true, PixelDirection::Upward}
                          : AxisScale{-3, 3, 80.0 / 6, 0, false, PixelDirection::Upward};
  return {.x = PixelMap(x, 1, 0),
          .y = PixelMap(y, 1, 0),
          .zero_value = 0.25,
          .base_line_slope = row.slope / points,
          .first_column = kSeen.left(),
          .last_column = kSeen.right()};
}

struct Data {
  PointChain points;
  PointErrors errors{{ErrorKind::Column, 0}, {ErrorKind::Column, 0}, {}, {}};
};

// Two bands of points with small errors, empty between them, and a few points with large errors or none.
Data Bands(std::size_t points) {
  std::mt19937_64 random(5);
  std::normal_distribution<double> normal(0, 1);
  Data data;
  for (std::size_t i = 1; i <= points; ++i) {
    const auto id = static_cast<std::int32_t>(i);
    data.points.Append(id, static_cast<double>(i), (i % 2 == 0 ? 2 : 0.3) + 0.1 * normal(random));
    const double scale = i % 97 == 0 ? 2 : 0.05;
    data.errors.y_values.Set(id, i % 11 == 0 ? kUndefined : scale * std::abs(normal(random)));
    data.errors.x_values.Set(id, i % 13 == 0 ? kUndefined : 0.01 * static_cast<double>(points));
  }
  return data;
}

int Pixel(double value) {
  return static_cast<int>(std::floor(std::clamp(value, -1e6, 1e6)));
}

// Bar by bar, pixel by pixel.
struct Expected {
  Pixels upright, level;

  Expected(const Data& data, const ThinningView& view) {
    for (std::size_t i = 0; i < data.points.Size(); ++i) {
      const Point point = data.points.At(i);
      const double zero = view.zero_value + view.base_line_slope * point.x;
      const int column = Pixel(view.x.At(point.x));
      const double y_pixel = view.y.At(point.y - zero);
      if (std::isnan(y_pixel)) continue;
      if (const double error = YErrorOf(data.errors, point); error > 0) {
        const double low = view.y.At(point.y - error - zero);
        const int bottom = std::isnan(low) ? kPlot.bottom() : Pixel(low);
        const int top = Pixel(view.y.At(point.y + error - zero));
        for (int y = std::max(top, kSeen.top()); y <= std::min(bottom, kSeen.bottom()); ++y) {
          if (column >= kSeen.left() - kReach && column <= kSeen.right() + kReach) {
            upright.emplace(column, y);
          }
        }
      }
      if (const double error = XErrorOf(data.errors, point); error > 0) {
        const int row = Pixel(y_pixel), right = Pixel(view.x.At(point.x + error));
        if (row < kSeen.top() - kReach || row > kSeen.bottom() + kReach) continue;
        for (int x = std::max(Pixel(view.x.At(point.x - error)), kSeen.left());
             x <= std::min(right, kSeen.right()); ++x) {
          level.emplace(x, row);
        }
      }
    }
  }
};

TEST(ThinBars, CoverThePixelsOfAllBars) {
  for (const Case& row :
       {Case{40, false, 0}, Case{40, true, 0}, Case{5'000, false, 0}, Case{5'000, true, 0},
        Case{5'000, false, 0.5}, Case{200'000, false, 0}, Case{200'000, true, 0.5},
        Case{200'000, false, 0, true}, Case{200'000, true, 0.5, true}}) {
    Data data = Bands(row.points);
    if (row.same_of_x)
      data.errors.x = {ErrorKind::Constant, 0.02 * static_cast<double>(row.points)};
    const ThinningView view = View(row);
    const PixelBars bars =
        ThinBars(data.points, ErrorBars(data.points, data.errors), view, {kSeen, kPlot, kReach});
    Pixels upright, level;
    for (const PixelBar& bar : bars.upright) {
      for (int y = bar.first; y <= bar.last; ++y) upright.emplace(bar.at, y);
    }
    for (const PixelBar& bar : bars.level) {
      for (int x = bar.first; x <= bar.last; ++x) level.emplace(x, bar.at);
      EXPECT_TRUE(bar.last_capped || bar.last == kSeen.right()) << row.points << bar.at;
    }
    const Expected expected(data, view);
    EXPECT_TRUE(upright == expected.upright) << row.points << row.log << row.slope;
    EXPECT_TRUE(level == expected.level) << row.points << row.log << row.slope;
    EXPECT_FALSE(upright.empty() || level.empty());
    EXPECT_LT(bars.upright.size(), 2'500U);
  }
}

TEST(ThinBars, EndsBeyondWhatIsSeenHaveNoCaps) {
  const struct {
    bool log;
    double y, error;
    bool top_capped, bottom_capped;
  } kCases[] = {
      {false, 0, 1, true, true},  {false, 0, 2.8, true, false}, {false, 0, 9, false, false},
      {true, 1, 0.5, true, true}, {true, 1, 1.5, true, false},  {true, 1, 99, false, false},
  };
  for (const auto& row : kCases) {
    Data data;
    data.points.Append(1, 50, row.y + 0.25);
    data.errors = {{ErrorKind::Constant, row.error}, {}, {}, {}};
    const PixelBars bars = ThinBars(data.points, ErrorBars(data.points, data.errors),
                                    View({100, row.log, 0}), {kSeen, kPlot, kReach});
    ASSERT_EQ(bars.upright.size(), 1U) << row.error;
    EXPECT_EQ(bars.upright.front().first_capped, row.top_capped) << row.error;
    EXPECT_EQ(bars.upright.front().last_capped, row.bottom_capped) << row.error;
  }
}

TEST(WithBars, WidensLinearAxesByAllAndLogarithmicOnesByADecadeAtMost) {
  const struct {
    AxisKind axis;
    double error, slope, low, high;
  } kCases[] = {
      {AxisKind::Linear, 0.5, 0, 0.5, 4.5},      {AxisKind::Linear, 3, 0, -2, 7},
      {AxisKind::Logarithmic, 0.5, 0, 0.5, 4.5}, {AxisKind::Logarithmic, 3, 0, 0.1, 7},
      {AxisKind::Linear, 0.5, 1, -0.5, 0.5},
  };
  for (const auto& row : kCases) {
    Data data;
    for (const int i : {1, 2, 3, 4}) data.points.Append(i, i, i);
    data.errors = {{ErrorKind::Constant, row.error}, {}, {}, {}};
    const BaseLine line{0, row.slope};
    const Extremes wide =
        WithBars(FindExtremes(data.points, line), ErrorBars(data.points, data.errors), data.points,
                 line, AxisKind::Linear, row.axis);
    EXPECT_EQ(wide, (Extremes{1, 4, row.low, row.high})) << row.error;
  }
}

}  // namespace
}  // namespace tarnwick
