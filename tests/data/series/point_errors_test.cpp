#include "data/series/point_errors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "data/series/data_series.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;
using ::testing::IsNan;
using testing::NanSensitiveDoubleEq;

TEST(PointErrors, FollowTheirRule) {
  const double none = kUndefined;
  const struct {
    ErrorRule rule;
    double own, value, y_error, x_error;
  } kCases[] = {
      {{ErrorKind::None, 3}, 0.5, 4, none, none},
      {{ErrorKind::Column, 3}, 0.5, 4, 0.5, 0.5},
      {{ErrorKind::Column, 3}, 0, 4, 0, 0},
      {{ErrorKind::Column, 3}, -0.5, 4, none, none},
      {{ErrorKind::Column, 3}, HUGE_VAL, 4, none, none},
      {{ErrorKind::Constant, 3}, 0.5, 4, 3, 3},
      {{ErrorKind::Constant, -3}, 0.5, 4, none, none},
      {{ErrorKind::Percent, 5}, 0.5, -4, 0.2, 0.2},
      {{ErrorKind::Percent, 5}, 0.5, none, none, none},
      {{ErrorKind::Counts, 5}, 0.5, 16, 4, none},
      {{ErrorKind::Counts, 5}, 0.5, 0, 0, none},
      {{ErrorKind::Counts, 5}, 0.5, -1, none, none},
  };
  for (const auto& row : kCases) {
    PointErrors errors{row.rule, row.rule, {}, {}};
    errors.y_values.Set(7, row.own);
    errors.x_values.Set(7, row.own);
    const Point point{7, row.value, row.value, 0};
    const auto place = static_cast<int>(&row - kCases);
    EXPECT_THAT(YErrorOf(errors, point), NanSensitiveDoubleEq(row.y_error)) << place;
    EXPECT_THAT(XErrorOf(errors, point), NanSensitiveDoubleEq(row.x_error)) << place;
  }
}

TEST(ErrorColumn, ACopyKeepsItsNumbersAndIsEqualUntilOneIsEdited) {
  const std::vector<double> numbers(5000, 2.5);
  ErrorColumn column;
  EXPECT_THAT(column.Of(4000), IsNan());
  column.SetRun(100, numbers);
  ErrorColumn copy = column;
  copy.Set(4000, 1);
  EXPECT_EQ(column.Of(4000), 2.5);
  EXPECT_EQ(column.Of(5099), 2.5);
  EXPECT_THAT(column.Of(99), IsNan());
  EXPECT_THAT(column.Of(5100), IsNan());
  EXPECT_FALSE(copy == column);
  copy.Set(4000, 2.5);
  EXPECT_TRUE(copy == column);
  copy.Set(1 << 20, kUndefined);
  EXPECT_TRUE(copy == column);
}

std::vector<double> ErrorsOf(const TDataSeries& series) {
  std::vector<double> errors;
  for (std::size_t i = 0; i < series.Points().Size(); ++i) {
    errors.push_back(YErrorAt(series, series.Points().At(i)));
  }
  return errors;
}

// Every value brings an error that its Y tells, or none where Y is below 0: wherever it comes to stand, they stay together.
TEST(PointErrors, StayWithTheirPointsOnEveryWayIn) {
  std::mt19937 random(5);
  for (int round = 0; round < 120; ++round) {
    TDataSeries series;
    series.SetDuplicatesAllowed(round % 3 == 0);
    if (round % 5 == 4) series.SetNumericalTolerance(0.4);
    series.SetErrors({{ErrorKind::Column, 0}, {ErrorKind::Column, 0}, {}, {}});
    for (int part = 0; part < 6; ++part) {
      const bool brings = random() % 4 != 0;
      std::vector<double> x, y, own_y, own_x;
      const std::size_t size = random() % (part % 3 == 1 ? 3000 : 20);
      for (std::size_t i = 0; i < size; ++i) {
        const auto number = static_cast<double>(random() % 1'000'000 + 1);
        x.push_back(random() % 50 == 0 ? kUndefined
                    : part % 2 == 0    ? static_cast<double>(random() % 400)
                                       : static_cast<double>(i / 2));
        y.push_back(brings ? number : -number);
        own_y.push_back(number / 8);
        own_x.push_back(number / 16);
      }
      if (brings) {
        series.AddPoints(x, y, {own_y, own_x});
      } else if (part % 2 == 0) {
        series.AddPoints(x, y);
      } else {
        for (std::size_t i = 0; i < size; ++i) series.AddPoint(x[i], y[i]);
      }
      if (part == 3) series.ShiftX(1);
      if (part == 4 && series.PointCount() > 2) series.DeletePoint(series.Points().At(1).id);
    }
    for (std::size_t i = 0; i < series.Points().Size(); ++i) {
      const Point point = series.Points().At(i);
      const double expected = point.y > 0 ? point.y / 8 : kUndefined;
      ASSERT_THAT(YErrorAt(series, point), NanSensitiveDoubleEq(expected)) << round << ' ' << i;
      ASSERT_THAT(XErrorAt(series, point), NanSensitiveDoubleEq(expected / 2)) << round << ' ' << i;
    }
  }
}

TEST(PointErrors, ComeBackWithTheStateAndGoWithThePoints) {
  TDataSeries series;
  series.SetErrors({{ErrorKind::Column, 0}, {}, {}, {}});
  const std::vector<double> x = {1, 2, 3}, errors = {0.1, 0.2, 0.3};
  series.AddPoints(x, x, {errors, {}});
  const DataState before = series.State();
  EXPECT_TRUE(SameState(before, series.State()));
  PointErrors edited = series.Errors();
  edited.y_values.Set(2, 9);
  series.SetErrors(edited);
  EXPECT_FALSE(SameState(before, series.State()));
  series.DeletePoint(1);
  series.SetY(3, 8);
  EXPECT_THAT(ErrorsOf(series), ElementsAre(9, 0.3));
  series.SetState(before);
  EXPECT_THAT(ErrorsOf(series), ElementsAre(0.1, 0.2, 0.3));
  // New points get the ids anew, and nothing of the old ones.
  series.Clear();
  series.AddPoint(1, 1);
  EXPECT_THAT(ErrorsOf(series), ElementsAre(IsNan()));
}

}  // namespace
}  // namespace tarnwick
