#include "analysis/sample_comparison.h"

#include <cmath>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/scipy_rows.h"

namespace tarnwick {
namespace {

std::vector<double> Made(int count, double (*value)(double)) {
  std::vector<double> values;
  values.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) values.push_back(value(i));
  return values;
}

TEST(SampleComparison, IsThatOfScipy) {
  std::vector<double> other = rows::Uneven();
  for (double& value : other) value /= 4;
  const SampleComparison c = CompareSamples(rows::Measured(), other);
  EXPECT_THAT((std::vector{c.first.mean, c.first.deviation, c.first.lower_quartile, c.first.median,
                           c.first.upper_quartile, c.t, c.t_probability, c.f, c.f_probability,
                           c.distance, c.distance_probability}),
              ::testing::Pointwise(::testing::DoubleNear(1e-12), rows::kComparison));
  EXPECT_FALSE(c.has_ties);
  const SampleComparison many =
      CompareSamples(Made(3000, [](double i) { return std::fmod(i * 0.618, 1); }),
                     Made(2500, [](double i) { return std::fmod(i * 0.414, 1) * 1.02; }));
  EXPECT_NEAR(many.distance_probability, 0.6464668045868802, 1e-9);  // by the limit of many
}

TEST(SampleComparison, TellsNothingOfTooFewOrOfValuesThatAreAlike) {
  const SampleComparison one = CompareSamples({{3.0, kUndefined}}, {{3.0, 4.0}});
  EXPECT_EQ(one.first.count, 1u);
  EXPECT_TRUE(std::isnan(one.t_probability) && std::isnan(one.f_probability));
  EXPECT_TRUE(one.has_ties);
  EXPECT_EQ(one.distance_probability, 1);
  const SampleComparison flat = CompareSamples({{3.0, 3.0}}, {{3.0, 3.0}});
  EXPECT_TRUE(std::isnan(flat.t) && std::isnan(flat.f));
  EXPECT_TRUE(std::isnan(CompareSamples({}, {{1.0}}).distance));
}

}  // namespace
}  // namespace tarnwick
