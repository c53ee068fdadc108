#include "graph/thinning/arrival_thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <QRegion>

#include "data/series/data_series.h"
#include "graph/thinning/arrival_cover.h"

namespace tarnwick {
namespace {

constexpr int kColumns = 400, kRows = 300;

struct Way {
  const char* kind;
  std::size_t points;
  double from, to;  // part of the X range seen
  double log = 0, slope = 0;
};

void AddWay(const Way& way, TDataSeries& series) {
  std::mt19937_64 random(way.points);
  std::normal_distribution<double> normal(0, 1);
  std::uniform_real_distribution<double> uniform(0, 1);
  std::vector<double> x, y;
  for (std::size_t i = 0; i < way.points; ++i) {
    const double turn = 9.0 * static_cast<double>(i) / static_cast<double>(way.points);
    const std::string kind = way.kind;
    x.push_back(kind == "scribble" ? uniform(random) : 0.5 + 0.5 * std::cos(turn));
    if (kind.starts_with("noisy")) x.back() += 0.004 * normal(random);
    y.push_back(2 * std::sin(turn) + 2.5 + 0.2 * normal(random));
    if (kind.ends_with("holes") && i % 701 < 3) y.back() = std::nan("");
  }
  series.SetDuplicatesAllowed(true);
  series.AddPoints(x, y);
}

AxisScale Scale(double min, double max, bool log, PixelDirection direction, double pixels) {
  const double extent = log ? std::log(max) - std::log(min) : max - min;
  return {min, max, pixels / extent, 0, log, direction};
}

// The rows that a line covers in each column, by walking along it in steps of a fraction of a pixel.
class Covered {
 public:
  Covered() : low_(kColumns, 1e9), high_(kColumns, -1e9) {}
  void Join(PixelPoint from, PixelPoint to) {
    const double length = std::hypot(to.x - from.x, to.y - from.y);
    const int steps = static_cast<int>(std::min(1e5, 4 * length)) + 1;
    for (int i = 0; i <= steps; ++i) {
      const double share = static_cast<double>(i) / steps;
      Take(std::floor(from.x + share * (to.x - from.x)), from.y + share * (to.y - from.y));
    }
  }
  void Take(double column, double y) {
    if (!(column >= 0 && column < kColumns)) return;
    const auto at = static_cast<std::size_t>(column);
    low_[at] = std::min(low_[at], y);
    high_[at] = std::max(high_[at], y);
  }
  double Low(int column) const { return low_[static_cast<std::size_t>(column)]; }
  double High(int column) const { return high_[static_cast<std::size_t>(column)]; }

 private:
  std::vector<double> low_, high_;
};

void Draw(const ThinnedLine& line, Covered& covered) {
  for (const LinePart& part : line.parts) {
    for (std::size_t i = part.begin; i < part.end; ++i) {
      const bool first = i == part.begin;
      if (part.kind == LinePart::Kind::Polyline) {
        covered.Join(line.points[first ? i : i - 1], line.points[i]);
        continue;
      }
      const PixelColumn& column = line.columns[i];
      covered.Take(column.column, column.top);
      covered.Take(column.column, column.bottom);
      if (first) continue;
      EXPECT_EQ(line.columns[i - 1].column + 1, column.column);
      covered.Join(line.columns[i - 1].last, column.first);
    }
  }
}

ThinningView ViewOf(const Way& way) {
  return {.x = {Scale(way.from, way.to, way.log != 0, PixelDirection::Rightward, kColumns), 1, 0},
          .y = {Scale(0.1, 5, way.log != 0, PixelDirection::Upward, kRows), 1, 0},
          .base_line_slope = way.slope,
          .first_column = 0,
          .last_column = kColumns - 1};
}

// Calls join(from, to) for every two points of the line that follow one another.
template <class Join>
void ForEachStep(const ArrivalLine& line, const ThinningView& view, Join join) {
  const auto place = [&](std::size_t at) {
    return PixelPoint{view.x.At(line.X()[at]),
                      view.y.At(line.Y()[at] - view.base_line_slope * line.X()[at])};
  };
  for (std::size_t i = 1; i < line.X().size(); ++i) {
    const bool apart = std::ranges::binary_search(line.Breaks(), i);
    if (!apart && !std::isnan(place(i).y) && !std::isnan(place(i - 1).y))
      join(place(i - 1), place(i));
  }
}

// The line covers in every column what it covers without thinning: no excursion is lost, none invented.
TEST(ThinArrivals, CoversWhatEveryPointCovers) {
  const Way kWays[] = {
      {"loop", 300'000, 0, 1},       {"loop", 300'000, 0.2, 0.3},    {"loop", 900, 0, 1},
      {"loop", 100'000, 0.01, 1, 1}, {"loop", 20'000, 0, 1, 0, 0.5}, {"noisy", 100'000, 0, 1},
      {"scribble", 5'000, 0.4, 0.6}, {"holes", 200'000, 0, 1},
  };
  for (const Way& way : kWays) {
    SCOPED_TRACE(testing::Message() << way.kind << ' ' << way.points << ' ' << way.from);
    TDataSeries series;
    AddWay(way, series);
    const ThinningView view = ViewOf(way);
    const ArrivalLine line(series.Points(), {});
    Covered expected, drawn;
    ForEachStep(line, view, [&](PixelPoint from, PixelPoint to) { expected.Join(from, to); });
    const ThinnedLine thinned = ThinArrivals(line, view);
    Draw(thinned, drawn);
    for (int column = 0; column < kColumns; ++column) {
      ASSERT_NEAR(drawn.Low(column), expected.Low(column), 1) << column;
      ASSERT_NEAR(drawn.High(column), expected.High(column), 1) << column;
    }
    if (way.points > 10'000 && std::string(way.kind) != "noisy") {
      EXPECT_LT(thinned.points.size() + thinned.columns.size(), 20 * kColumns);
    }
  }
}

// Whatever boxes are passed over, the same pixels are marked as by every step; a line that is no tangle is left to be drawn.
TEST(CoverOf, HoldsWhatEveryStepPasses) {
  const Way kWays[] = {
      {"noisy", 400'000, 0, 1},        {"noisy", 100'000, 0.2, 0.3},
      {"noisy", 100'000, 0.01, 1, 1},  {"noisy holes", 100'000, 0, 0.7},
      {"noisy", 50'000, 0, 1, 0, 0.5}, {"scribble", 30'000, 0.4, 0.6},
  };
  const QRect area(3, 2, kColumns - 9, kRows - 7);
  for (const Way& way : kWays) {
    SCOPED_TRACE(testing::Message() << way.kind << ' ' << way.points << ' ' << way.from);
    TDataSeries series;
    AddWay(way, series);
    const ThinningView view = ViewOf(way);
    const ArrivalLine line(series.Points(), PointGaps({1'000, 1'001, 20'017}, series.LastId()));
    ASSERT_EQ(line.Breaks().size(), 3U);
    LineCover expected(area);
    ForEachStep(line, view, [&](PixelPoint from, PixelPoint to) { expected.Join(from, to); });
    ASSERT_TRUE(IsTangle(line, view, area));
    EXPECT_EQ(CoverOf(line, view, area).Runs(), expected.Runs());
  }
  TDataSeries loop;
  AddWay({"loop", 300'000, 0, 1}, loop);
  EXPECT_FALSE(IsTangle({loop.Points(), {}}, ViewOf({"loop", 0, 0, 1}), area));
}

/// The pixels and those up to `wider` beside them.
QRegion RegionOf(const LineCover& cover, int wider) {
  QRegion region;
  for (const QRect& run : cover.Runs()) region += run.adjusted(-wider, -wider, wider, wider);
  return region;
}

// Moved over, drawn nearer or from further off, drawn against another base line: no pixel beside what the line passes.
TEST(KeptCover, ShowsWhatTheLinePasses) {
  const QRect area(0, 0, kColumns, kRows);
  for (const double log : {0, 1}) {
    TDataSeries series;
    AddWay({"noisy", 200'000, 0, 1}, series);
    const ArrivalLine line(series.Points(), PointGaps({1'000, 20'017}, series.LastId()));
    KeptCover kept;
    for (const auto& [from, to, zero_value] : {std::array{0.1, 0.6, 0.},
                                               {0.1, 0.6, 0.},
                                               {0.12, 0.61, 0.},
                                               {0.12, 0.5, 0.},
                                               {0.3, 0.35, 0.},
                                               {0.31, 0.35, 0.},
                                               {0.01, 1., 0.},
                                               {0.01, 1., -0.5}}) {
      SCOPED_TRACE(testing::Message() << log << ' ' << from << ' ' << to << ' ' << zero_value);
      ThinningView view = ViewOf({"noisy", 0, from, to, log});
      view.zero_value = zero_value;
      const std::optional<LineCover> cover = kept.Of(line, view, area);
      ASSERT_TRUE(cover);
      const LineCover& drawn = *cover;
      const LineCover exact = CoverOf(line, view, area);
      EXPECT_GT(RegionOf(drawn, 0).boundingRect().width(), kColumns / 4);
      EXPECT_TRUE((RegionOf(drawn, 0) - RegionOf(exact, 1)).isEmpty());
      EXPECT_TRUE((RegionOf(exact, 0) - RegionOf(drawn, 1)).isEmpty());
    }
  }
}

}  // namespace
}  // namespace tarnwick
