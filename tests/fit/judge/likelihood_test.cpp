#include "fit/judge/likelihood.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(CountDeviance, IsThatOfPoissonsLaw) {
  const struct {
    const char* name;
    std::vector<double> y, f;
    double deviance;
  } rows[] = {
      {"counts that the model hits", {4, 9}, {4, 9}, 0},
      {"twice the model", {4}, {2}, 2 * (4 * std::numbers::ln2 - 2)},
      {"no counts: twice what was expected", {0}, {3}, 6},
      {"several", {4, 0}, {2, 3}, 2 * (4 * std::numbers::ln2 - 2) + 6},
      {"counts below 0", {-1}, {2}, kUndefined},
      {"nothing expected", {1}, {0}, kUndefined},
      {"less than nothing expected", {1}, {-2}, kUndefined},
      {"no number", {kUndefined}, {2}, kUndefined},
      {"no value of the model", {2}, {kUndefined}, kUndefined},
  };
  for (const auto& row : rows) {
    const double found = CountDeviance(row.y, row.f);
    EXPECT_EQ(IsUndefined(found), IsUndefined(row.deviance)) << row.name;
    if (IsUndefined(row.deviance)) continue;
    EXPECT_NEAR(found, row.deviance, 1e-14) << row.name;
  }
}

}  // namespace
}  // namespace tarnwick
