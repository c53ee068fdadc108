#include "analysis/histogram.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numeric>
#include <vector>

#include "analysis/scipy_rows.h"

namespace tarnwick {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Histogram, CountsEveryFiniteValueOnce) {
  struct Row {
    std::vector<double> values;
    std::size_t bins;
    std::vector<std::size_t> counts;
    double first, width;
    std::size_t left_out;
  };
  const double huge = std::numeric_limits<double>::max();
  const Row rows[] = {
      {{0, 1, 2, 3, 4},
       4,
       {1, 1, 1, 2},
       0,
       1,
       0},  // an edge belongs upwards, the greatest to the last
      {{-1, kInfinity, 1, std::nan("")}, 2, {1, 1}, -1, 1, 2},
      {{7, 7, 7}, 10, {3}, 7 - 3.5e-6, 7e-6, 0},
      {{-huge, huge}, 2, {1, 1}, -huge, huge, 0},  // the whole range is beyond any number
      {{1, 2, 3, 4, 5, 6, 7, 8}, 0, {2, 2, 2, 2}, 1, 1.75, 0},  // Sturges' number at least
      {{}, 5, {}, 0, 0, 0}};
  for (const Row& row : rows) {
    const Histogram histogram = CountInBins(row.values, row.bins);
    EXPECT_EQ(histogram.counts, row.counts);
    EXPECT_DOUBLE_EQ(histogram.first, row.first);
    EXPECT_DOUBLE_EQ(histogram.width, row.width);
    EXPECT_EQ(histogram.left_out, row.left_out);
  }
}

TEST(Histogram, CountsAreThoseOfNumpy) {
  EXPECT_THAT(CountInBins(rows::Measured(), 7).counts,
              ::testing::ElementsAreArray(
                  std::vector<std::size_t>(rows::kCounts.begin(), rows::kCounts.end())));
}

TEST(Histogram, BinsGrowWithTheCubeRootAndNoFurtherThanCanBeSeen) {
  std::vector<double> even(8000);
  std::iota(even.begin(), even.end(), 0.0);
  EXPECT_EQ(BinsFor(even), 20U);  // 7999 / (2 * 3999.5 / 20)
  even.push_back(1e9);
  EXPECT_EQ(BinsFor(even), 200U);
}

}  // namespace
}  // namespace tarnwick
