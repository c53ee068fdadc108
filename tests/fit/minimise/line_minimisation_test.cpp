#include "fit/minimise/line_minimisation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <vector>

namespace tarnwick {
namespace {

TEST(LineMinimisation, GoesDownFromTheSteps0And1ByTheGoldenRatio) {
  std::vector<double> steps;
  const auto fenced = [&](double step) {
    steps.push_back(step);
    return step < 100 ? 1000 - step : std::numeric_limits<double>::infinity();
  };
  const std::optional<LineBracket> bracket = BracketMinimum(fenced, 1000);
  ASSERT_TRUE(bracket);
  ASSERT_GE(steps.size(), 3U);
  EXPECT_EQ(steps[0], 1.0);
  EXPECT_DOUBLE_EQ(steps[1], 2.618034);
  // The parabola through a line has no vertex: 100 intervals on is the limit.
  EXPECT_NEAR(steps[2], 1 + 100 * 1.618034, 1e-9);
  EXPECT_LE(bracket->middle.value, bracket->first.value);
  EXPECT_LT(bracket->middle.value, bracket->last.value);
  // The fence is found from inside.
  EXPECT_NEAR(MinimiseInBracket(fenced, *bracket).step, 100, 0.02);
}

TEST(LineMinimisation, EndsWhereTheFunctionFallsWithoutEnd) {
  int asked = 0;
  const auto falling = [&](double step) {
    ++asked;
    return -step;
  };
  EXPECT_FALSE(BracketMinimum(falling, 0));
  EXPECT_LT(asked, 200);
}

TEST(LineMinimisation, FindsTheMinimumOnBothSidesToAPartIn10000) {
  for (const double minimum : {-300.0, -1.0, -1e-3, 0.0, 1e-6, 0.3, 1.0, 77.0, 1e5}) {
    const auto f = [&](double step) { return std::hypot(1, step - minimum); };
    const std::optional<LineBracket> bracket = BracketMinimum(f, f(0));
    ASSERT_TRUE(bracket) << minimum;
    EXPECT_NEAR(MinimiseInBracket(f, *bracket).step, minimum, 2e-4 * std::abs(minimum) + 1e-7);
  }
}

}  // namespace
}  // namespace tarnwick
