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
                           {"x*cos(p)", -307.145, 307.145},  // once, though turns do as well
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

TEST(EqualValues, OfSeveralParametersMakeUpForEachOther) {
  const Points points = MakePoints(60, 0, 59, 0, [](double) { return 0.0; });
  const double pi = std::numbers::pi;
  const struct {
    const char* expression;
    std::vector<double> values;
    std::vector<double> others;  // empty: none
  } kRows[] = {
      {"A*sin(f*x+p)", {-0.995, -0.07, -3.128}, {0.995, 0.07, 3.128}},
      {"A*sin(f*x+p)", {0.9, -0.07, 0.5}, {0.9, 0.07, pi - 0.5}},
      {"A*sin(f*x+p)", {-2, 0.07, 0.5}, {2, 0.07, 0.5 - pi}},
      {"A*cos(f*x+p)", {2, -0.07, 0.5}, {2, 0.07, -0.5}},
      {"A*sin(f*x)+p", {-2, -0.07, 3}, {2, 0.07, 3}},
      {"A*sin(f*x+p)", {2, 0.07, -0.5}, {}},
      {"A*exp(-f*x)+p", {-2, -0.01, -3}, {}},
      {"A+f*x+0*p", {-2, -1, -1}, {}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(::testing::Message() << row.expression << ' ' << row.values[0]);
    const auto model = MakeModel(
        row.expression, {{"A", row.values[0]}, {"f", row.values[1]}, {"p", row.values[2]}});
    ModelResiduals residuals(*model, points.View());
    const std::vector<double> start = residuals.Start();
    const std::vector<EqualSet> found =
        FindEqualSets(residuals, points.x, start, FindEqualValues(residuals, points.x, start));
    ASSERT_EQ(found.size(), row.others.empty() ? 0U : 1U);
    if (found.empty()) continue;
    std::vector<double> others = row.values;
    for (const EqualSet::Member& one : found.front().members)
      others[static_cast<std::size_t>(one.parameter)] = one.value;
    for (std::size_t i = 0; i < others.size(); ++i) EXPECT_NEAR(others[i], row.others[i], 1e-9);
  }
}

}  // namespace
}  // namespace tarnwick::testing
