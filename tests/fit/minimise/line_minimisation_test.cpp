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

struct Path {
  const char* name;
  LineFunction f;
  std::vector<double> bracketing, searching;
};

// The steps that programs of their own take, written after the books that the header names.
TEST(LineMinimisation, TakesTheStepsOfThePublishedSearches) {
  const Path paths[] = {
      {"nearly a parabola",
       [](double s) { return (s - 3) * (s - 3) + 0.01 * s * s * s; },
       {1, 2.618034, 2.90788201, 3.37686595},
       {3.08701793, 2.79716993, 2.87587799, 2.87616557, 2.8755904}},
      {"far quartic",
       [](double s) { return std::pow(s - 40, 4) / 1e4; },
       {1, 2.618034, 14.1498164, 32.8086323, 26.8406429, 62.999231},
       {44.3404145, 51.467448, 39.302529, 40.9796687, 40.131301, 39.8913989, 40.0106711, 39.9895708,
        40.0001187, 39.9961187, 40.0041187}},
      {"to the left",
       [](double s) { return (s + 2) * (s + 2) * (1 + s * s); },
       {1, -1.618034, -1.04598282, -4.23606803},
       {-2.61803398, -1.00000003, -1.70601134, -2.05437298, -2.04409634, -1.98828909, -1.88046858,
        -2.00047765, -1.99980324, -2.00000322, -2.00020322}},
      {"steep",
       [](double s) { return std::cosh(s - 7.5) + s * s * s / 50; },
       {1, 2.618034, 2.3385105, 5.23606803, 4.26029743, 9.47213609},
       {6.854102, 7.85410201, 6.06504274, 6.06056904, 5.97695617, 5.69396209, 5.98966862,
        5.99026758, 5.99086661}},
      {"flattening",
       [](double s) { return s - 50 * std::log(s + 0.5); },
       {1, 2.618034, 2.68437419, 2.79171489, 5.69121039, 10.3826927, 11.9327657, 14.4408366,
        21.7391524, 33.5480754, 35.9716399, 39.8930495, 46.1606546, 56.3018528},
       {50.0342475, 52.4282596, 49.5671898, 49.4880779, 49.4998087, 49.5047587, 49.4948587}},
      {"step",
       [](double s) { return std::atan(3 * (1.9 - s)) + 0.09 * (s - 2) * (s - 2); },
       {1, 2.618034, 5.23606803},
       {3.61803398, 4.23606797, 3.2277205, 3.19823492, 3.11707326, 2.92645723, 3.13303644,
        3.13404064, 3.13372724, 3.13341386}},
      {"hump",
       [](double s) {
         return 2.5 * std::exp(-8 * (s - 1.8) * (s - 1.8)) - s + 0.02 * s * s * s * s;
       },
       {1, 2.618034, 2.87697317},
       {2.00000003, 2.38196603, 2.53055221, 2.55941396, 2.55236844, 2.55150781, 2.55125266,
        2.55099753}},
  };
  for (const Path& path : paths) {
    std::vector<double> steps;
    const LineFunction asked = [&](double step) {
      steps.push_back(step);
      return path.f(step);
    };
    const std::optional<LineBracket> bracket = BracketMinimum(asked, path.f(0));
    ASSERT_TRUE(bracket);
    static_cast<void>(MinimiseInBracket(asked, *bracket));
    std::vector<double> expected = path.bracketing;
    expected.insert(expected.end(), path.searching.begin(), path.searching.end());
    ASSERT_EQ(steps.size(), expected.size()) << path.name;
    for (std::size_t i = 0; i < steps.size(); ++i)
      EXPECT_NEAR(steps[i], expected[i], 2e-7 * std::abs(expected[i])) << path.name << ' ' << i;
  }
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

}  // namespace
}  // namespace tarnwick
