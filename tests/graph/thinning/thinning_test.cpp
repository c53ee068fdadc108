#include "graph/thinning/thinning.h"
#include "graph/thinning/arrival_thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "data/points/arrival_order.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr int kColumns = 400;
constexpr int kRows = 300;

AxisScale Scale(double min, double max, bool log, PixelDirection direction, double pixels) {
  const double extent = log ? std::log(max) - std::log(min) : max - min;
  return {min, max, pixels / extent, 0, log, direction};
}

ThinningView View(const AxisScale& x, const AxisScale& y) {
  return {.x = {x, 1, 0}, .y = {y, 1, 0}, .first_column = 0, .last_column = kColumns - 1};
}

struct Extent {
  double top = 1e300, bottom = -1e300;
  void Take(double y) {
    top = std::min(top, y);
    bottom = std::max(bottom, y);
  }
};

// The extent of what is drawn in each pixel column, by its vertices.
std::map<int, Extent> ExtentsOf(const ThinnedLine& line) {
  std::map<int, Extent> extents;
  for (const PixelPoint& point : line.points) {
    extents[static_cast<int>(std::floor(point.x))].Take(point.y);
  }
  for (const PixelColumn& column : line.columns) {
    extents[column.column].Take(column.top);
    extents[column.column].Take(column.bottom);
  }
  return extents;
}

struct Line {
  std::vector<double> x, y;
};

Line MakeLine(std::size_t points, const std::string& kind) {
  std::mt19937_64 random(points);
  std::normal_distribution<double> normal(0, 1);
  std::uniform_real_distribution<double> uniform(0, 1);
  Line line;
  double x = 0, walk = 0;
  for (std::size_t i = 0; i < points; ++i) {
    // "bursts": most points in a few places, long stretches with none
    x += kind == "bursts" ? (i % 1000 == 0 ? 1 : 1e-6) : uniform(random);
    walk += normal(random);
    double y = kind == "walk" ? walk : normal(random);
    if (kind == "gaps" && i % 701 < 3) y = kNan;
    if (kind == "huge" && i % 977 == 0) y = i % 2 == 0 ? 1e300 : -kInfinity;
    line.x.push_back(x);
    line.y.push_back(kind == "positive" ? std::exp(normal(random)) : y);
  }
  return line;
}

// The obvious way: points grouped by pixel column; three or more are a column, as are two right behind one; else vertices.
ThinnedLine Grouped(const Line& data, std::size_t begin, std::size_t end,
                    const ThinningView& view) {
  ThinnedLine line;
  const auto place = [&](std::size_t i) {
    const double base = view.zero_value + view.base_line_slope * data.x[i];
    return PixelPoint{view.x.At(data.x[i]), view.y.At(data.y[i] - base)};
  };
  const auto open = [&](LinePart::Kind kind, std::size_t at) {
    line.parts.push_back({kind, at, at});
  };
  const auto vertex = [&](std::size_t i) {
    if (line.parts.empty() || line.parts.back().kind != LinePart::Kind::Polyline) {
      open(LinePart::Kind::Polyline, line.points.size());
      if (i > begin) line.points.push_back(place(i - 1));
    }
    line.points.push_back(place(i));
    line.parts.back().end = line.points.size();
  };
  for (std::size_t i = begin; i < end;) {
    const auto column_of = [&](std::size_t k) {
      return std::clamp(static_cast<int>(std::floor(place(k).x)), -1, kColumns);
    };
    std::size_t next = i;
    PixelColumn column{column_of(i), place(i), {}, 1e300, -1e300};
    for (; next < end && column_of(next) == column.column; ++next) {
      column.last = place(next);
      column.top = std::min(column.top, place(next).y);
      column.bottom = std::max(column.bottom, place(next).y);
    }
    const bool in_columns =
        !line.parts.empty() && line.parts.back().kind == LinePart::Kind::Columns;
    const bool follows = in_columns && line.columns.back().column + 1 == column.column;
    if (next - i >= 3 || (follows && next - i == 2)) {
      if (!follows) {
        if (i > begin) vertex(i);
        open(LinePart::Kind::Columns, line.columns.size());
      }
      line.columns.push_back(column);
      line.parts.back().end = line.columns.size();
    } else {
      vertex(i);
      if (next - i > 1) vertex(next - 1);
    }
    i = next;
  }
  return line;
}

struct Case {
  const char* kind;
  std::size_t points;
  double from, to;      // part of the X range seen
  bool grouped = true;  // no value is without a place, so that the line is one
  bool log_x = false, log_y = false;
  double slope = 0;
};

void ExpectSame(const ThinnedLine& line, const ThinnedLine& expected) {
  ASSERT_EQ(line.columns.size(), expected.columns.size());
  ASSERT_EQ(line.points.size(), expected.points.size());
  ASSERT_EQ(line.parts.size(), expected.parts.size());
  const auto near = [](const PixelPoint& one, const PixelPoint& other) {
    return std::abs(one.x - other.x) < 1e-6 && std::abs(one.y - other.y) < 1e-6;
  };
  for (std::size_t i = 0; i < line.columns.size(); ++i) {
    const PixelColumn &one = line.columns[i], &other = expected.columns[i];
    ASSERT_EQ(one.column, other.column);
    ASSERT_TRUE(near(one.first, other.first) && near(one.last, other.last)) << one.column;
    ASSERT_TRUE(near({one.top, one.bottom}, {other.top, other.bottom})) << one.column;
  }
  for (std::size_t i = 0; i < line.points.size(); ++i)
    ASSERT_TRUE(near(line.points[i], expected.points[i])) << i;
  for (std::size_t i = 0; i < line.parts.size(); ++i) {
    ASSERT_EQ(line.parts[i].kind, expected.parts[i].kind);
    ASSERT_EQ(line.parts[i].begin, expected.parts[i].begin);
    ASSERT_EQ(line.parts[i].end, expected.parts[i].end);
  }
}

// Every column shows exactly the extent of its points, however many they are and whatever is kept of them.
TEST(ThinLine, GivesWhatGroupingByColumnsGives) {
  const Case kCases[] = {
      {"noise", 100, 0, 1, false},
      {"noise", 1'100, -0.01, 1.01},
      {"noise", 2'000, -0.01, 1.01},
      {"noise", 200'000, -0.01, 1.01},
      {"noise", 200'000, 0.5, 0.5001, false},
      {"walk", 100'000, 0.31, 0.36},
      {"walk", 300'000, 0.5, 0.505},
      {"walk", 60'000, -0.5, 2},
      {"bursts", 100'000, -0.01, 1.01},
      {"bursts", 40'000, 0.2, 0.7},
      {"gaps", 50'000, 0, 1, false},
      {"gaps", 900'000, 0, 1, false},
      {"huge", 100'000, 0, 1, false},
      {"positive", 50'000, 0.01, 1.01, true, true, true},
      {"positive", 900'000, 0, 1, true, false, true},
      {"noise", 400'000, 0, 1, false, false, true},  // half of the values have no place
      {"noise", 300'000, 0.1, 0.9, true, false, false, 3e-4},
  };
  for (const Case& row : kCases) {
    SCOPED_TRACE(testing::Message() << row.kind << ' ' << row.points << ' ' << row.from);
    const Line data = MakeLine(row.points, row.kind);
    TDataSeries series;
    series.AddPoints(data.x, data.y);
    const double from = row.from * data.x.back(), to = row.to * data.x.back();
    ThinningView view = View(Scale(from, to, row.log_x, PixelDirection::Rightward, kColumns),
                             row.log_y ? Scale(0.01, 100, true, PixelDirection::Upward, kRows)
                                       : Scale(-4, 4, false, PixelDirection::Upward, kRows));
    view.zero_value = 0.125 * (row.slope != 0);
    view.base_line_slope = row.slope;
    const ThinnedLine line = ThinLine(series.Points(), view);
    EXPECT_LE(line.points.size() + line.columns.size(), 25 * kColumns);
    if (row.grouped) {
      // The points in the view and one on either side.
      const auto index = [&](auto found) {
        return static_cast<std::size_t>(found - data.x.begin());
      };
      const std::size_t first = index(std::lower_bound(data.x.begin(), data.x.end(), from));
      const std::size_t behind = index(std::upper_bound(data.x.begin(), data.x.end(), to));
      ExpectSame(line, Grouped(data, first == 0 ? 0 : first - 1,
                               std::min(behind + 1, data.x.size()), view));
      continue;
    }
    std::map<int, Extent> expected, drawn = ExtentsOf(line);
    for (std::size_t i = 0; i < data.x.size(); ++i) {
      const double x = view.x.At(data.x[i]), y = view.y.At(data.y[i]);
      const bool on_border = std::abs(x - std::round(x)) < 1e-9;  // either column is right
      if (x >= 0 && x < kColumns && y == y && !on_border) {
        expected[static_cast<int>(std::floor(x))].Take(y);
      }
    }
    for (const auto& [column, extent] : expected) {
      ASSERT_NEAR(drawn[column].top, extent.top, 1e-6) << column;
      ASSERT_NEAR(drawn[column].bottom, extent.bottom, 1e-6) << column;
    }
  }
}

// An undefined value between two plateaus, or the beginning of a piece: nothing may join them, whether its column is drawn point
// by point or by extremes, along the chain or as the points came.
TEST(ThinLine, GapsBreakTheLine) {
  for (const std::size_t points : {11, 10'001, 1'000'001}) {
    for (const bool undefined : {true, false}) {
      SCOPED_TRACE(testing::Message() << points << (undefined ? " undefined" : " pieces"));
      const std::size_t third = points / 3;
      Line data;
      for (std::size_t i = 0; i < points; ++i) {
        data.x.push_back(static_cast<double>(i));
        data.y.push_back(undefined && i == third ? kNan : i < third ? 1 : -1);
      }
      TDataSeries series;
      series.AddPoints(data.x, data.y);
      const auto begin = static_cast<std::int32_t>(third + 1);
      if (!undefined) series.SetGaps(PointGaps({begin}, series.LastId()));
      const PointChain& chain = series.Points();
      const ThinningView view =
          View(Scale(0, static_cast<double>(points), false, PixelDirection::Rightward, kColumns),
               Scale(-4, 4, false, PixelDirection::Upward, kRows));
      for (const ThinnedLine& line : {ThinLine(chain, view, BreaksAlongChain(chain, series.Gaps())),
                                      ThinArrivals(ArrivalLine(chain, series.Gaps()), view)}) {
        ASSERT_EQ(line.parts.size(), 2u);
        for (const PixelColumn& column : line.columns) EXPECT_EQ(column.top, column.bottom);
      }
    }
  }
}

TEST(ThinLine, NeighboursOutsideTheViewAreKept) {
  TDataSeries series;
  for (const double x : {0.0, 1.0, 100.0, 101.0}) series.AddPoint(x, x);
  const ThinnedLine line =
      ThinLine(series.Points(), View(Scale(40, 60, false, PixelDirection::Rightward, kColumns),
                                     Scale(0, 100, false, PixelDirection::Upward, kRows)));
  ASSERT_EQ(line.points.size(), 2u);
  EXPECT_LT(line.points[0].x, 0);
  EXPECT_GT(line.points[1].x, kColumns);
}

// The curve was missing on ranges near the ends of the doubles, whose lengths or pixels per unit are none.
TEST(PixelMap, PlacesTheValuesOfEveryRange) {
  const std::pair<double, double> ranges[] = {{-1.7e308, 1.7e308}, {0, 1.7e308},
                                              {-1e307, 1e306},     {0, 1e-307},
                                              {-1e-307, 3e-307},   {0, 4e-323}};
  for (const auto& [min, max] : ranges) {
    AxisState axis;
    axis.Min = min;
    axis.Max = max;
    const long double pixels_per_unit = PixelsPerUnit(axis, kColumns);
    for (const AxisId id : {AxisId::X, AxisId::Y}) {
      const PixelMap map(ScaleOf(axis, id, 40, pixels_per_unit), 1, 0);
      ASSERT_TRUE(map.Usable()) << min << " to " << max;
      for (const double share : {0.0, 0.25, 1.0}) {
        const double value = min * (1 - share) + max * share;
        const double pixel = 40 + kColumns * (id == AxisId::X ? share : 1 - share);
        EXPECT_NEAR(map.At(value), pixel, 1e-9) << min << " to " << max;
        EXPECT_NEAR(map.ValueAt(pixel) / max, value / max, 1e-12) << min << " to " << max;
      }
    }
  }
}

TEST(ThinLine, AxesWithoutExtentGiveNothing) {
  TDataSeries series;
  series.AddPoint(1, 1);
  const AxisScale good = Scale(0, 2, false, PixelDirection::Rightward, kColumns);
  for (const double factor : {0.0, kNan, kInfinity}) {
    AxisScale bad = good;
    bad.pixels_per_unit = factor;
    EXPECT_TRUE(ThinLine(series.Points(), View(bad, good)).parts.empty());
    EXPECT_TRUE(ThinLine(series.Points(), View(good, bad)).parts.empty());
  }
  EXPECT_TRUE(ThinLine(PointChain(), View(good, good)).parts.empty());
}

}  // namespace
}  // namespace tarnwick
