#include "fit/judge/distributions.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(StudentQuantile, MeetsTheTables) {
  struct Row {
    std::int64_t degrees_of_freedom;
    double level;
    double quantile;
  };
  // Two-sided points of Student's distribution, as every textbook prints them.
  for (const Row& row : {Row{1, 0.95, 12.706205}, Row{2, 0.99, 9.924843}, Row{5, 0.95, 2.570582},
                         Row{30, 0.9, 1.697261}, Row{1000000, 0.95, 1.959966}}) {
    EXPECT_NEAR(StudentQuantile(row.degrees_of_freedom, row.level), row.quantile, 1e-6)
        << row.degrees_of_freedom;
  }
  for (const double level : {0.0, 1.0, -0.5, kUndefined})
    EXPECT_TRUE(IsUndefined(StudentQuantile(5, level))) << level;
  EXPECT_TRUE(IsUndefined(StudentQuantile(0, 0.95)));
}

// As the tables of textbooks print them.
TEST(Distributions, MeetTheTables) {
  EXPECT_NEAR(NormalQuantile(0.95), 1.959964, 1e-6);
  EXPECT_NEAR(ChiSquaredProbability(18.307, 10), 0.05, 1e-5);
  EXPECT_NEAR(ChiSquaredProbability(3.8415, 1), 0.05, 1e-5);
  EXPECT_NEAR(VarianceRatioProbability(4.10, 2, 10), 0.05, 1e-3);
  EXPECT_NEAR(VarianceRatioProbability(4.9646, 1, 10), 0.05, 1e-5);
  EXPECT_NEAR(StudentProbability(-2.2281, 10), 0.05, 1e-5);
  EXPECT_NEAR(BoundedProbability(0.5, 1, 0, 1.0 / 3), 0.25, 1e-12);  // even between -1 and 1
  EXPECT_EQ(ChiSquaredProbability(HUGE_VAL, 3), 0);
  EXPECT_TRUE(IsUndefined(ChiSquaredProbability(1, 0)));
  EXPECT_TRUE(IsUndefined(VarianceRatioProbability(1, 1, 0)));
}

TEST(Distributions, HaveNoValueBeyondTheirEdges) {
  for (const double level : {-0.1, 0.0, 1.0, 1.1}) {
    EXPECT_TRUE(IsUndefined(StudentQuantile(5, level))) << level;
    EXPECT_TRUE(IsUndefined(NormalQuantile(level))) << level;
  }
  EXPECT_TRUE(IsUndefined(StudentQuantile(0, 0.5)));
  EXPECT_TRUE(IsUndefined(ChiSquaredProbability(1, 0)));
  EXPECT_NEAR(StudentQuantile(1, 0.5), 1, 1e-9);  // Cauchy's law
  EXPECT_NEAR(StudentQuantile(2, 0.5), std::sqrt(2.0 / 3), 1e-9);
  EXPECT_NEAR(NormalQuantile(0.95), 1.959963984540054, 1e-9);
  EXPECT_NEAR(ChiSquaredProbability(3, 2), std::exp(-1.5), 1e-12);
  EXPECT_NEAR(StudentProbability(1, 1), 0.5, 1e-9);
  EXPECT_NEAR(VarianceRatioProbability(1, 2, 2), 0.5, 1e-9);
}

}  // namespace
}  // namespace tarnwick
