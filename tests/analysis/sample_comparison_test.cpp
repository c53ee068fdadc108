#include "analysis/sample_comparison.h"

#include <cmath>
#include <vector>

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

std::vector<double> Made(int count, double (*value)(double)) {
  std::vector<double> values;
  values.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) values.push_back(value(i));
  return values;
}

double First(double i) {
  return std::sin(7 * i) + 0.01 * i;
}
double Second(double i) {
  return 0.3 + 1.5 * std::cos(3 * i) + 0.01 * i;
}

TEST(SampleComparison, IsThatOfScipy) {
  const SampleComparison c = CompareSamples(Made(30, First), Made(20, Second));
  EXPECT_NEAR(c.first.mean, 0.22102519732877327, 1e-14);
  EXPECT_NEAR(c.first.deviation, 0.7216916038787097, 1e-14);
  EXPECT_NEAR(c.first.lower_quartile, -0.4395087195627896, 1e-14);
  EXPECT_NEAR(c.first.median, 0.2466716060269819, 1e-14);
  EXPECT_NEAR(c.t, 0.9266802209579558, 1e-12);
  EXPECT_NEAR(c.t_freedom, 31.217318657682767, 1e-10);
  EXPECT_NEAR(c.t_probability, 0.361201958948709, 1e-12);
  EXPECT_NEAR(c.f, 2.047751561822775, 1e-12);
  EXPECT_NEAR(c.f_probability, 0.0796146220559246, 1e-12);
  EXPECT_NEAR(c.distance, 0.35, 1e-14);
  EXPECT_NEAR(c.distance_probability, 0.08926848744392459, 1e-12);
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
