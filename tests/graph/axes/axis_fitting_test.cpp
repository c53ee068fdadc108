// The numeric and the logarithmic autoscale: every rule by a row, and sweeps over ranges of every size.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "base/error.h"
#include "graph/axes/log_divisions.h"
#include "graph/axes/nice_step.h"

namespace tarnwick {
namespace {

constexpr double kMost = std::numeric_limits<double>::max();
constexpr double kLeast = std::numeric_limits<double>::denorm_min();

TEST(NiceStep, IsTheLargestRoundStepWithEnoughIntervals) {
  struct Row {
    double min, max;
    int min_steps;
    double step;
  };
  constexpr Row kRows[] = {{0, 1, 5, 0.2},     {0, 0.5, 5, 0.1},       {0, 0.74, 5, 0.1},
                           {0, 10, 5, 2},      {0, 1000, 5, 200},      {0, 999, 5, 100},
                           {0, 6, 5, 1},       {0, 4.9, 5, 0.5},       {0, 2.4, 5, 0.2},
                           {0, 1, 20, 0.05},   {0, 1, 35, 0.02},       {0, 1, 36, 0.02},
                           {0, 0.1, 5, 0.01},  {0, 1e-300, 5, 1e-301}, {-kMost, kMost, 5, 5e307},
                           {0, 1.2, 36, 0.02}, {0, kLeast, 5, kLeast}, {3, 3, 5, 0},
                           {4, 3, 5, 0}};
  for (const Row& row : kRows) {
    EXPECT_EQ(NiceStep(row.min, row.max, row.min_steps), row.step)
        << row.min << " to " << row.max << ", " << row.min_steps << " steps";
  }
}

TEST(StepLimits, RefuseWhatDoesNotFitTogether) {
  struct Row {
    int min, max, wanted_min, wanted_max, min_after, max_after;
  };
  constexpr Row kRows[] = {{5, 50, 5, 91, 5, 50},    {35, 89, 35, 90, 35, 90},
                           {36, 89, 36, 90, 36, 89}, {5, 50, 0, 50, 5, 50},
                           {5, 50, 19, 50, 19, 50},  {5, 50, 20, 50, 5, 50},
                           {5, 50, 5, 12, 5, 50},    {5, 50, 5, 13, 5, 13}};
  for (const Row& row : kRows) {
    const StepLimits limits =
        WithMaxSteps(WithMinSteps({row.min, row.max}, row.wanted_min), row.wanted_max);
    EXPECT_EQ(limits, (StepLimits{row.min_after, row.max_after}))
        << row.wanted_min << ", " << row.wanted_max;
  }
}

TEST(StepGrid, GivesDecimalMultiples) {
  EXPECT_EQ(StepGrid(0.1).At(3), 0.3);
  EXPECT_EQ(StepGrid(0.7).At(-9), -6.3);
  EXPECT_EQ(StepGrid(1e-30).At(7), 7e-30);
  EXPECT_EQ(StepGrid(1.0 / 3).At(3), 1.0);
  EXPECT_FALSE(std::signbit(StepGrid(0.1).At(-0.0L)));
  EXPECT_EQ(StepGrid(1.05).At(3), 3.15);
  EXPECT_EQ(StepGrid(30090).At(-7), -210630);
  const struct {
    double value, mantissa;
    int exponent, decimals, digits, last;
  } kSplits[] = {{105, 1.05, 2, 0, 3, 0},
                 {0.3, 3, -1, 1, 1, -1},
                 {1000, 1, 3, 0, 1, 3},
                 {90909, 9.0909, 4, 0, 5, 0},
                 {0.0909, 9.09, -2, 4, 3, -4},
                 {1, 1, 0, 0, 1, 0},
                 {kMost, 1.7976931348623157, 308, 0, 17, 292}};
  for (const auto& row : kSplits) {
    EXPECT_EQ(SplitDecimal(row.value).mantissa, row.mantissa) << row.value;
    EXPECT_EQ(SplitDecimal(row.value).exponent, row.exponent) << row.value;
    const StepGrid grid(row.value);
    EXPECT_EQ(grid.Decimals(), row.decimals) << row.value;
    EXPECT_EQ(grid.SignificantDigits(), row.digits) << row.value;
    EXPECT_EQ(grid.LastDigit(), row.last) << row.value;
  }
  constexpr std::int64_t kExact = std::int64_t{1} << 53;
  EXPECT_EQ(ScaledByTen(0, 500), 0);
  EXPECT_EQ(ScaledByTen(3, 22), 3e22);
  EXPECT_EQ(ScaledByTen(3, 23), 3e23);
  EXPECT_EQ(ScaledByTen(-3, -22), -3e-22);
  EXPECT_EQ(ScaledByTen(-3, -23), -3e-23);
  EXPECT_EQ(ScaledByTen(kExact, 1), 9007199254740992e1);
  EXPECT_EQ(ScaledByTen(kExact + 2, -1), 9007199254740994e-1);
  EXPECT_EQ(ScaledByTen(7, 400), HUGE_VAL);
  EXPECT_EQ(ScaledByTen(-7, 400), -HUGE_VAL);
  EXPECT_EQ(ScaledByTen(7, -400), 0);
}

TEST(FitNumericRange, FollowsTheRules) {
  struct Row {
    const char* why;
    double o_min, o_max, step;
    StepChoice choice;
    double min, max, fitted_step;
  };
  constexpr auto kAuto = StepChoice::Automatic;
  constexpr auto kManual = StepChoice::Manual;
  constexpr Row kRows[] = {
      {"attracted to zero", 0.13, 0.87, 1, kAuto, 0, 0.9, 0.1},
      {"one value", 5, 5, 1, kAuto, 0, 6, 1},
      {"one value, truncated", 4, 4, 1, kAuto, 0, 4.5, 0.5},
      {"one value, whole steps by its decimals", 1, 1, 1, kAuto, 0, 1.2, 0.2},
      {"one value, negative", -5, -5, 1, kAuto, -6, 0, 1},
      {"one value, zero", 0, 0, 1, kAuto, -1, 1, 0.2},
      {"on step boundaries", 20, 30, 1, kAuto, 18, 32, 2},
      {"on step boundaries below zero", -30, -20, 1, kAuto, -32, -18, 2},
      {"across zero", -0.95, 2.1, 1, kAuto, -1, 2.5, 0.5},
      {"within a hundredth of a step", 20.005, 29.999, 1, kAuto, 19, 31, 1},
      {"negative with its top near zero", -9.5, -0.5, 1, kAuto, -10, 0, 1},
      {"negative, far from zero", -109.5, -100.5, 1, kAuto, -110, -100, 1},
      {"manual step kept", 0.5, 9.5, 3, kManual, 0, 12, 3},
      {"manual step too fine", 0.5, 9.5, 0.1, kManual, 0, 10, 1},
      {"manual step not positive", 0.5, 9.5, -3, kManual, 0, 10, 1},
      {"manual step wider than the data", 101, 102, 50, kManual, 100, 150, 50}};
  for (const Row& row : kRows) {
    const NumericRange range = FitNumericRange(row.o_min, row.o_max, row.step, row.choice, {});
    EXPECT_DOUBLE_EQ(range.min, row.min) << row.why;
    EXPECT_DOUBLE_EQ(range.max, row.max) << row.why;
    EXPECT_DOUBLE_EQ(range.step, row.fitted_step) << row.why;
  }
  // Of few steps, too, the last ends at the value rather than a whole one beyond.
  EXPECT_EQ(FitNumericRange(10, 10, 1, kAuto, {1, 50}).max, 10);
}

TEST(FitNumericRange, RefusesReversedExtremes) {
  try {
    FitNumericRange(2, 1, 1, StepChoice::Automatic, {});
    FAIL();
  } catch (const Error& error) {
    EXPECT_STREQ(error.what(), "Impossible: oMin > oMax in SetMinMax!");
  }
}

/// Pairs of extremes of every sign and size, close together and far apart.
class Extremes {
 public:
  double Value() {
    const double size = std::pow(10.0, exponent_(engine_)) * mantissa_(engine_);
    return engine_() % 2 == 0 ? size : -size;
  }
  double Near(double value) { return value + std::abs(value) * std::pow(10.0, nearness_(engine_)); }

 private:
  std::mt19937 engine_{7};
  std::uniform_real_distribution<double> exponent_{-307, 307}, mantissa_{1, 9.9}, nearness_{-17, 1};
};

TEST(FitNumericRange, HoldsDataOfAnySize) {
  Extremes extremes;
  for (int i = 0; i < 5000; ++i) {
    const double one = extremes.Value();
    const double other = i % 2 == 0 ? extremes.Near(one) : extremes.Value();
    const double low = std::min(one, other);
    const double high = std::max(one, other);
    const NumericRange range = FitNumericRange(low, high, 1, StepChoice::Automatic, {});
    const std::string what =
        std::to_string(i) + ": " + std::to_string(low) + " to " + std::to_string(high);
    ASSERT_LT(range.min, range.max) << what;
    ASSERT_LE(range.min, low) << what;
    ASSERT_GE(range.max, high) << what;
    ASSERT_TRUE(std::isfinite(range.min) && std::isfinite(range.max) && range.step > 0) << what;
    if (low == high) continue;
    const long double span = static_cast<long double>(high) - low;
    const long double steps = (static_cast<long double>(range.max) - range.min) / range.step;
    ASSERT_TRUE(steps >= 4.9999999L || range.step == FinestStep(low, high)) << what;
    if (span < 1e-10 * std::max(std::abs(low), std::abs(high)) || span < 1e-300) continue;
    // The largest step that gives five; bounds no farther than a step and its hundredth, or zero where that is near.
    ASSERT_GE(span / range.step, 4.99999L) << what;
    if (std::abs(std::log10(span)) < 90) {
      ASSERT_LT(span / range.step, 5 * 2.51L) << what;
    }
    const long double far = 1.0101L * range.step;
    const auto expect_bound = [&](long double nearer, long double distance, double bound) {
      if (bound == 0 && distance > far) {
        EXPECT_LT(nearer, 0.25L * (span + 2 * far)) << what;
      } else {
        EXPECT_LE(distance, far) << what;
        EXPECT_FALSE(bound != 0 && nearer > 0 && nearer < 0.2499L * span) << what;
      }
    };
    expect_bound(low, static_cast<long double>(low) - range.min, range.min);
    expect_bound(-high, static_cast<long double>(range.max) - high, range.max);
  }
}

TEST(LogDivisions, SnapDownAndCloseWithTen) {
  constexpr int kStored[] = {0, 1, 2, 2, 5, 5, 5, 7, 7, 9, 9};
  for (int requested = 0; requested <= 10; ++requested) {
    EXPECT_EQ(SnapLogDivisions(requested), kStored[requested]) << requested;
    EXPECT_EQ(LogDivisionTable(requested).back(), 10) << requested;
    // A set holds its count of divisions beside the decade itself, and the closing 10.
    EXPECT_EQ(LogDivisionTable(requested).size(), static_cast<std::size_t>(kStored[requested]) + 2);
  }
  EXPECT_EQ(SnapLogDivisions(-3), 0);
}

TEST(FitLogRange, FollowsTheRules) {
  struct Row {
    const char* why;
    double o_min, o_max;
    int divisions;
    StepChoice choice;
    double min, max;
    int divisions_after;
    bool narrow, labels;
    double step = 0.2;
  };
  constexpr auto kAuto = StepChoice::Automatic;
  constexpr auto kManual = StepChoice::Manual;
  constexpr Row kRows[] = {
      {"whole decades", 0.13, 870, 2, kAuto, 0.1, 1000, 0, false, true},
      {"powers of ten got an empty decade above", 10, 1000, 2, kAuto, 10, 1000, 1, false, true},
      {"so did those below one", 1e-5, 0.01, 2, kAuto, 1e-5, 0.01, 0, false, true},
      {"one closes its decade", 0.002, 1, 2, kAuto, 0.001, 1, 0, false, true},
      {"divisions below 30", 2.2, 44, 2, kManual, 2, 50, 2, false, true},
      {"closing ten", 2.2, 55, 2, kManual, 2, 100, 2, false, true},
      {"one as upper end", 0.15, 1, 5, kManual, 0.15, 1, 5, false, true},
      {"nothing but decades", 2.2, 44, 0, kManual, 1, 100, 0, false, true},
      {"table entries stay", 0.3, 5, 7, kManual, 0.3, 5, 7, false, true},
      {"narrow, linear bounds", 10.5, 20.5, 2, kAuto, 10, 22, 9, true, true},
      {"narrow, zero refused", 1, 3.9, 2, kManual, 0.5, 4, 2, true, true, 2},
      {"one value", 5, 5, 2, kAuto, 2.5, 6, 9, true, true},
      {"many decades", 1e-6, 9e6, 2, kManual, 1e-6, 1e7, 2, false, false},
      {"ten labels are too many", 1.5, 9e4, 2, kManual, 1, 1e5, 2, false, false}};
  for (const Row& row : kRows) {
    LogRange current;
    current.divisions = row.divisions;
    current.step = row.step;
    const LogRange range = FitLogRange(row.o_min, row.o_max, current, row.choice, {});
    EXPECT_DOUBLE_EQ(range.min, row.min) << row.why;
    EXPECT_DOUBLE_EQ(range.max, row.max) << row.why;
    EXPECT_EQ(range.divisions, row.divisions_after) << row.why;
    EXPECT_EQ(range.narrow, row.narrow) << row.why;
    EXPECT_EQ(range.division_labels, row.labels) << row.why;
  }
}

TEST(FitLogRange, HoldsDataOfAnySizeAboveZero) {
  Extremes extremes;
  for (int i = 0; i < 5000; ++i) {
    const double one = i == 0 ? kLeast : std::abs(extremes.Value());
    const double other = i % 2 == 0 ? extremes.Near(one) : std::abs(extremes.Value());
    const double low = std::min(one, other);
    const double high = std::max(one, other);
    const LogRange range = FitLogRange(low, high, {}, StepChoice::Automatic, {});
    ASSERT_GT(range.min, 0) << low << " to " << high;
    ASSERT_LT(range.min, range.max) << low << " to " << high;
    ASSERT_TRUE(range.min <= low && high <= range.max) << low << " to " << high;
    ASSERT_TRUE(std::isfinite(range.max)) << low << " to " << high;
    const long double ratio = static_cast<long double>(high) / low;
    ASSERT_EQ(range.narrow, low == high || ratio < 4) << low << " to " << high;
    if (low == high || low < 1e-300 || high > 1e300) continue;
    if (range.narrow) {
      const NumericRange plain = FitNumericRange(low, high, 1, StepChoice::Automatic, {});
      ASSERT_EQ(range.min, plain.min > 0 ? plain.min : low / 2) << low << " to " << high;
    } else {
      ASSERT_TRUE(low < 10 * range.min && range.max < 10 * high) << low << " to " << high;
    }
  }
}

}  // namespace
}  // namespace tarnwick
