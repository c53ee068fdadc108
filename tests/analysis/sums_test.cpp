#include "analysis/sums.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(Sums, SumAndAreaMeasureFromTheBaseLine) {
  TDataSeries series;
  EXPECT_EQ(Area(series), 0);
  series.AddPoint(0, 1);
  EXPECT_EQ(Area(series), 0);
  series.AddPoint(2, 3);
  series.AddPoint(3, 5);
  EXPECT_EQ(Sum(series), 9);
  EXPECT_EQ(Area(series), 8);
  series.SetZeroValue(1);
  series.SetBaseLineSlope(1);
  EXPECT_EQ(Sum(series), 1);
  EXPECT_EQ(Area(series), 0.5);
  series.AddPoint(4, kUndefined);
  EXPECT_TRUE(std::isnan(Sum(series)));
}

}  // namespace
}  // namespace tarnwick
