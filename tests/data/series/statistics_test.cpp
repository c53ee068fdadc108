#include "data/series/statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "base/undefined.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

TEST(Statistics, EqualValuesHaveNoDeviance) {
  EXPECT_EQ(ComputeStatistics({}, 0).sum, 0);
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

// About 5: deviations -1, -1 and 2, their squares 6, cubes 6, fourth powers 18 in all.
TEST(Statistics, MomentsAreThoseOfTheirSums) {
  for (const double unit : {1.0, 0x1p-30, 0x1p30}) {
    const StatisticsRecord found =
        ComputeStatistics(std::vector<double>{4 * unit, 4 * unit, 7 * unit}, 0);
    EXPECT_EQ(found.mean, 5 * unit);
    EXPECT_NEAR(*found.variance / (unit * unit), 3, 1e-12);
    EXPECT_NEAR(*found.skew * std::pow(unit, 3), 6 / (3 * 27.0), 1e-12);
    EXPECT_NEAR(*found.kurtosis, 18 / (3 * 36.0) - 3, 1e-12);
  }
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
