#include "fit/judge/fit_bands.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "base/undefined.h"

namespace tarnwick {
namespace {

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
  statistics.unit_variance = 0.25;
  statistics.determined_covariance = {0.01, 0, 0, 0.04};
  TCurFit model;
  AddVaried(model, "a", 2);
  AddVaried(model, "b", 1.5);
  model.SetExpression("a*x^b");  // by b: a x^b ln x
  model.Prepare();
  const FitBands bands = ComputeFitBands(model, statistics, std::vector<double>{0, 1}, 0.95);
  ASSERT_EQ(bands.value.size(), 2U);
  EXPECT_EQ(bands.confidence[0], 0);
  EXPECT_NEAR(bands.prediction[0], 2.262157 * 0.5, 1e-6);
  EXPECT_NEAR(bands.confidence[1], 2.262157 * 0.1, 1e-6);
}

}  // namespace
}  // namespace tarnwick
