#include "fit/judge/fit_bands.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

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

void AddVaried(TCurFit& model, const char* name, double value) {
  ParameterSettings settings;
  settings.Name = name;
  settings.Value = value;
  settings.Vary = true;
  model.AddParameter(std::make_unique<TDBLParameter>(settings));
}

TEST(FitBands, HoldWhereADerivativeHasNoValue) {
  FitStatistics statistics;
  statistics.degrees_of_freedom = 9;
  statistics.reduced_chi_squared = 0.25;
  statistics.determined_covariance = {0.01, 0, 0, 0.04};
  TCurFit model;
  AddVaried(model, "a", 2);
  AddVaried(model, "b", 1.5);
  model.SetExpression("a*x^b");  // by b: a x^b ln x
  model.Prepare();
  const FitBands bands = ComputeFitBands(model, statistics, std::vector<double>{0, 1}, 0.95);
  EXPECT_EQ(bands.confidence[0], 0);
  EXPECT_NEAR(bands.prediction[0], 2.262157 * 0.5, 1e-6);
  EXPECT_NEAR(bands.confidence[1], 2.262157 * 0.1, 1e-6);
}

}  // namespace
}  // namespace tarnwick
