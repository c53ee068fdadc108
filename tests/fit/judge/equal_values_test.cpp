#include "fit/judge/equal_values.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <optional>
#include <vector>

#include "fitted_model.h"

namespace tarnwick::testing {
namespace {

struct EqualRow {
  const char* expression;
  double value;
  std::optional<double> simpler;
};

TEST(EqualValues, AreThoseOfTheSameCurve) {
  const Points points = MakePoints(60, 0, 59, 0, [](double) { return 0.0; });
  const double pi = std::numbers::pi;
  const EqualRow rows[] = {{"sin(x/9+p)", 307.145, 307.145 - 98 * pi},
                           {"sin(x/9+p)", -2.5, std::nullopt},
                           {"sin(x/9+p)", -5.67, -5.67 + 2 * pi},
                           {"sin(x/9+p)", 4, std::nullopt},  // -2.3 is no simpler
                           {"cos(x/9+p)", -2.5, std::nullopt},
                           {"sin(pi*(x/9+p)/180)", 725, 5},
                           {"sin(2*pi*(x/9-p))", 4.25, 0.25},
                           {"exp(0-((x-20)/p)^2)", -7, 7},
                           {"exp(0-((x-20)/p)^2)", 7, std::nullopt},
                           {"exp(x/(10*p))", -7, std::nullopt},
                           // At the points a frequency of 3.2 is one of 0.2, between them not.
                           {"sin(2*pi*p*x)", 3.2, std::nullopt},
                           {"x+0*p", -7, std::nullopt}};
  for (const EqualRow& row : rows) {
    SCOPED_TRACE(row.expression);
    const auto model = MakeModel(row.expression, {{"p", row.value}});
    ModelResiduals residuals(*model, points.View());
    const std::vector<EqualValue> found = FindEqualValues(residuals, points.x, residuals.Start());
    ASSERT_EQ(found.size(), row.simpler ? 1U : 0U);
    if (row.simpler) {
      EXPECT_NEAR(found.front().value, *row.simpler, 1e-9);
    }
  }
}

}  // namespace
}  // namespace tarnwick::testing
