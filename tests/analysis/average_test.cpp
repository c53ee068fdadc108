#include "analysis/average.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarnwick {
namespace {

TEST(Average, TakesAtEachXThoseThatReachThere) {
  using XY = std::pair<double, double>;
  TDataSeries wide;
  for (const double x : {0, 2, 4, 6}) wide.AddPoint(x, 10 * x);
  TDataSeries narrow;
  for (const double x : {1, 2, 4}) narrow.AddPoint(x, x == 4 ? kUndefined : 1);
  const struct {
    const TDataSeries& reference;
    std::vector<const TDataSeries*> averaged;
    std::vector<XY> expected;
  } kRows[] = {
      {wide, {&wide}, {{0, 0}, {2, 20}, {4, 40}, {6, 60}}},
      {wide, {&narrow}, {{0, 0}, {2, 1}, {4, 0}, {6, 0}}},
      {wide, {&wide, &narrow}, {{0, 0}, {2, 10.5}, {4, 40}, {6, 60}}},
      {narrow, {&wide}, {{1, 10}, {2, 20}, {4, 40}}},
  };
  for (const auto& row : kRows) {
    TDataSeries mean;
    Average(row.reference, row.averaged, mean);
    std::vector<XY> points;
    mean.Points().ForEachPoint([&](double x, double y) { points.emplace_back(x, y); });
    EXPECT_EQ(points, row.expected);
  }
}

TEST(Average, AnEndAnswersForAHundredthOfItsStep) {
  TDataSeries series;
  series.AddPoint(0, 1);
  series.AddPoint(10, 2);
  TDataSeries reference;
  for (const double x : {-0.11, -0.09, 10.09, 10.11}) reference.AddPoint(x, 0);
  TDataSeries mean;
  const TDataSeries* const averaged[] = {&series};
  Average(reference, averaged, mean);
  std::vector<double> y;
  mean.Points().ForEachPoint([&](double, double value) { y.push_back(value); });
  EXPECT_THAT(y, testing::ElementsAre(0, 1, 2, 0));
}

}  // namespace
}  // namespace tarnwick
