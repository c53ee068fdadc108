#include "base/quantile.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace tarnwick {
namespace {

TEST(Quantile, LiesLinearBetweenValues) {
  std::vector<double> values = {4, 1, 3, 2};
  const std::pair<double, double> rows[] = {{0, 1}, {1, 4}, {0.5, 2.5}, {0.25, 1.75}, {0.95, 3.85}};
  for (const auto& [p, quantile] : rows) EXPECT_DOUBLE_EQ(QuantileOf(values, p), quantile) << p;
}

}  // namespace
}  // namespace tarnwick
