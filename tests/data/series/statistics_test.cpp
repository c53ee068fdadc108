#include "data/series/statistics.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/undefined.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

constexpr double kNone = 1e99;  // stands for an unset value

struct Case {
  std::vector<double> values;
  double tolerance;
  double mean, median, mode, lower_quartile, upper_quartile, lower_quintile, upper_quintile;
};

double Or(const std::optional<double>& value) {
  return value.value_or(kNone);
}

TEST(Statistics, TakesQuantilesByPositionAndTheModeByRuns) {
  const Case cases[] = {
      {{1, 2, 3, 4}, 0, 2.5, 2, 1, 1, 3, kNone, 4},
      {{1, 2}, 0, 1.5, 1, 1, kNone, 2, kNone, 2},
      {{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 0, 5.5, 5, 1, 2, 8, 2, 8},
      // Later runs do not count their first value, so 2, 2 is no longer than the 1 before it.
      {{1, 2, 2, 3}, 0, 2, 2, 1, 1, 2, kNone, 3},
      {{1, 2, 2, 2, 3}, 0, 2, 2, 2, 1, 2, 1, 2},
      // Ties keep the earlier run; the mode is the value that made the length.
      {{1, 1.5, 4, 4.5, 4.6}, 0.5, 3.12, 1.5, 1.5, 1, 4.5, 1, 4.5},
  };
  for (const Case& c : cases) {
    const StatisticsRecord r = ComputeStatistics(c.values, c.tolerance);
    EXPECT_EQ(r.count, static_cast<std::int32_t>(c.values.size()));
    EXPECT_DOUBLE_EQ(Or(r.mean), c.mean);
    EXPECT_EQ(Or(r.median), c.median);
    EXPECT_EQ(Or(r.mode), c.mode) << c.values.size();
    EXPECT_EQ(Or(r.lower_quartile), c.lower_quartile);
    EXPECT_EQ(Or(r.upper_quartile), c.upper_quartile);
    EXPECT_EQ(Or(r.lower_quintile), c.lower_quintile);
    EXPECT_EQ(Or(r.upper_quintile), c.upper_quintile);
  }
}

TEST(Statistics, MomentsFollowTheirFormulas) {
  const std::vector<double> values = {1, 2, 2, 5};
  const StatisticsRecord r = ComputeStatistics(values, 0);
  // Deviations -1.5, -0.5, -0.5, 2.5: squares 9, cubes 12, fourth powers 44.25.
  EXPECT_DOUBLE_EQ(*r.variance, 3);
  EXPECT_DOUBLE_EQ(*r.skew, 12.0 / (4 * 27));
  EXPECT_DOUBLE_EQ(*r.kurtosis, 44.25 / (81 * 4) - 3);
  EXPECT_EQ(r.message, "");
  // A large mean costs no digits.
  const std::vector<double> shifted = {1e9 + 1, 1e9 + 2, 1e9 + 2, 1e9 + 5};
  EXPECT_DOUBLE_EQ(*ComputeStatistics(shifted, 0).variance, 3);
  // Nor does a mean that no double holds tilt what is symmetric.
  const std::vector<double> close = {1, 1.001};
  EXPECT_EQ(ComputeStatistics(close, 0).skew, 0);
}

TEST(Statistics, SaysWhyFiguresAreMissing) {
  const StatisticsRecord none = ComputeStatistics({}, 0);
  EXPECT_EQ(none.message, "No Statistics are available unless more than one point exists");
  EXPECT_TRUE(none.unavailable);
  EXPECT_EQ(none.count, 0);
  EXPECT_EQ(none.sum, 0);
  const std::vector<double> one = {5};
  EXPECT_TRUE(ComputeStatistics(one, 0).unavailable);
  EXPECT_EQ(ComputeStatistics(one, 0).mean, std::nullopt);
  // So many that a plain sum is rounded.
  const std::vector<double> equal(100'000, 0.1);
  const StatisticsRecord flat = ComputeStatistics(equal, 0);
  EXPECT_EQ(flat.mean, 0.1);
  EXPECT_EQ(flat.message,
            "No skew/kurtosis are available because there is no deviance in the data");
  EXPECT_EQ(flat.skew, 0);
  EXPECT_EQ(flat.kurtosis, 0);
  EXPECT_EQ(flat.variance, 0);
}

TEST(Statistics, OfADataSetUseStoredYAndAreRenewedByAChange) {
  TDataSeries series;
  series.SetZeroValue(100);
  const double x[] = {1, 2, 3, 4};
  const double y[] = {4, 1, 3, 2};
  series.AddPoints(x, y);
  EXPECT_EQ(series.YStatistics().upper_quartile, 3);
  EXPECT_EQ(series.XStatistics().median, 2);
  series.SetY(1, 44);
  EXPECT_EQ(series.YStatistics().upper_quintile, 44);
}

TEST(Statistics, UndefinedValuesAreSortedLast) {
  std::vector<double> values = {kUndefined, 3, -HUGE_VAL, kUndefined, 1, HUGE_VAL};
  SortValues(values);
  EXPECT_EQ(values[0], -HUGE_VAL);
  EXPECT_EQ(values[3], HUGE_VAL);
  EXPECT_TRUE(std::isnan(values[4]) && std::isnan(values[5]));
}

}  // namespace
}  // namespace tarnwick
