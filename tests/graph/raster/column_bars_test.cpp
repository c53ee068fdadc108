#include "graph/raster/column_bars.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <map>
#include <random>
#include <vector>

namespace tarnwick {
namespace {

using Levels = std::map<std::pair<int, int>, double>;  // of column and row

std::vector<PixelColumn> Walk(std::mt19937& random, int first, int count, double wander) {
  std::uniform_real_distribution<double> uniform(0, 1);
  std::vector<PixelColumn> columns;
  double y = 60 * uniform(random);
  for (int column = first; column < first + count; ++column) {
    const double end = y + wander * (uniform(random) - 0.5);
    columns.push_back({column, {column + 0.2, y}, {column + 0.7, end}, 0, 0});
    columns.back().top = std::min(y, end) - wander * uniform(random) / 9;
    columns.back().bottom = std::max(y, end) + wander * uniform(random) / 9;
    y = end + wander * (uniform(random) - 0.5);
  }
  return columns;
}

// What the stroke covers, pixel by pixel: fully within whole columns of half the width less a quarter, by the rest of that
// beyond.
Levels Covered(const std::vector<PixelColumn>& columns, double width, const QRect& clip) {
  const double side = width / 2 - 0.25, part = side - std::floor(side);
  Levels levels;
  for (int at = clip.left(); at <= clip.right(); ++at) {
    const auto extent = [&](double reach) {
      double top = 1e300, bottom = -1e300;
      const auto take = [&](double y) { top = std::min(top, y), bottom = std::max(bottom, y); };
      for (std::size_t i = 0; i < columns.size(); ++i) {
        const PixelColumn& column = columns[i];
        if (std::abs(column.column - at) > reach) continue;
        take(column.top), take(column.bottom);
        // Half way between the points on both sides of a border, 0.3 before and 0.2 behind it, weighted by that.
        if (i > 0) take((columns[i - 1].last.y * 0.2 + column.first.y * 0.3) / 0.5);
        if (i + 1 < columns.size())
          take((column.last.y * 0.2 + columns[i + 1].first.y * 0.3) / 0.5);
      }
      return std::pair(top - side, bottom + side);
    };
    const auto full = extent(std::floor(side)), wide = extent(std::ceil(side));
    const auto share = [](const std::pair<double, double>& interval, int row) {
      return std::max(std::min(interval.second, row + 1.0) - std::max(interval.first, 1.0 * row),
                      0.0);
    };
    for (int row = clip.top(); row <= clip.bottom(); ++row) {
      const double inner = share(full, row);
      levels[{at, row}] = inner + part * (share(wide, row) - inner);
    }
  }
  return levels;
}

// The bars add up to what a slow count gives, as rectangles and as ink alike.
TEST(ColumnBars, CoverWhatAStrokeCovers) {
  std::mt19937 random(8);
  const QRect clip(5, 3, 50, 160);
  for (const double width : {1.0, 1.5, 2.0, 3.0, 3.5, 6.0}) {
    for (const double wander : {2.0, 60.0, 900.0}) {
      const std::vector<PixelColumn> columns = Walk(random, width < 2 ? 9 : -4, 40, wander);
      std::vector<ColumnBar> bars;
      AddColumnBars(columns, width, clip, bars);
      Levels drawn;
      QImage whole(60, 170, QImage::Format_RGB32), ours = whole;
      whole.fill(Qt::white), ours.fill(Qt::white);
      ColumnInks inks;
      for (int level = 0; level <= ColumnBar::kLevels; ++level)
        inks[static_cast<std::size_t>(level)] =
            RasterInk(qRgba(0, 0, 0, 255 * level / ColumnBar::kLevels));
      QPainter painter(&whole), below(&ours);
      auto reference = RasterSurface::Of(painter, whole.rect());
      auto surface = RasterSurface::Of(below, ours.rect());
      ASSERT_TRUE(reference && surface);
      for (const ColumnBar& bar : bars) {
        EXPECT_TRUE(clip.adjusted(0, 0, 0, 1).contains(bar.rect));
        reference->Fill(bar.rect & clip, inks[static_cast<std::size_t>(bar.level)]);
        for (int x = bar.rect.left(); x <= bar.rect.right(); ++x)
          for (int y = bar.rect.top(); y <= bar.rect.bottom(); ++y)
            drawn[{x, y}] += 1.0 * bar.level / ColumnBar::kLevels;
      }
      FillColumnBars(columns, width, clip, inks, *surface);
      painter.end(), below.end();
      EXPECT_EQ(ours, whole) << width << ' ' << wander;
      for (const auto& [pixel, level] : Covered(columns, width, clip))
        ASSERT_NEAR(drawn[pixel], level, 2.01 / ColumnBar::kLevels)
            << width << ' ' << wander << ": " << pixel.first << ',' << pixel.second;
    }
  }
}

TEST(ColumnBars, ALineThatGoesOnlyOnDoesNotWander) {
  const QRect clip(0, 10, 9, 90);  // to row 100
  const PixelColumn steep{1, {1, 20}, {1.5, 80}, 20, 80}, back{2, {2, 50}, {2.5, 60}, 0, 90};
  EXPECT_EQ(MeanWander({}, clip), 0);
  EXPECT_EQ(MeanWander(std::vector{steep}, clip), 0);
  EXPECT_EQ(MeanWander(std::vector{steep, back}, clip), (80 - 10) / 2.0);
  EXPECT_EQ(MeanWander(std::vector{PixelColumn{3, {3, 95}, {3.5, 200}, 95, 500}}, clip), 0);
}

}  // namespace
}  // namespace tarnwick
