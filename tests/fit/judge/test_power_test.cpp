#include "fit/judge/test_power.h"

#include <gtest/gtest.h>

#include <cmath>

#include "fit/fit_result.h"

namespace tarnwick {
namespace {

struct Row {
  const char* name;
  double r_squared, shape;
  double
      hidden;  // the deviation, by a table of Student's distribution: 3.690 + 1.314 for 27 degrees of freedom
  TestGap gap;
};

// 30 points, two parameters: one in 15 of all fits has such a shape by chance, which is something only where much could hide.
TEST(TestPower, AHintCountsByWhatTheScatterHides) {
  for (const Row& row :
       {Row{"little hidden", 0.975, 0.06, 0.1495, TestGap::None},
        Row{"much hidden, a hint", 0.9, 0.06, 0.2990, TestGap::PatternHinted},
        Row{"much hidden, no hint", 0.9, 0.2, 0.2990, TestGap::None},
        Row{"little hidden, a strong hint", 0.999, 0.003, 0.0299, TestGap::PatternHinted},
        Row{"too much hidden", 0.87, 1, 0.3410, TestGap::Hidden}}) {
    SCOPED_TRACE(row.name);
    FitResult result;
    result.statistics.points = 30;
    result.statistics.varied = 2;
    result.statistics.degrees_of_freedom = result.residuals.freedom = 28;
    result.statistics.r_squared = row.r_squared;
    result.residuals.shape = row.shape;
    EXPECT_NEAR(HiddenDeviation(result), row.hidden, 1e-4);
    EXPECT_EQ(FindTestGap(result), row.gap);
  }
}

}  // namespace
}  // namespace tarnwick
