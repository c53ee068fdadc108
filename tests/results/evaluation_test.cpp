#include "results/evaluation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/fits/fit_run.h"
#include "base/progress.h"
#include "graph/series.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;

std::vector<std::string> Told(const std::vector<Evaluated>& lines) {
  std::vector<std::string> told;
  for (const Evaluated& line : lines) {
    std::ostringstream text;
    text << line.by << ' ' << line.x << ' ' << line.y;
    if (!IsUndefined(line.error)) text << " +- " << line.error;
    told.push_back(text.str());
  }
  return told;
}

class Evaluation : public ::testing::Test {
 protected:
  Evaluation() {
    for (const double x : {0, 1, 2, 3}) series_.AddPoint(x, 10 + (x == 2 ? 8 : x));
    series_.SetZeroValue(10);
  }
  TSeries series_;
};

TEST_F(Evaluation, TellsPointAndLineBetweenPointsLessTheBaseLine) {
  PointErrors errors;
  errors.y = {ErrorKind::Constant, 2};
  series_.SetErrors(errors);
  EXPECT_THAT(Told(EvaluateAt(series_, 1.5)),
              ElementsAre("Nearest point 1 1 +- 2", "Interpolated 1.5 4.5 +- 1.41421"));
  EXPECT_THAT(Told(EvaluateAt(series_, 7)), ElementsAre("Nearest point 3 3 +- 2"));
  EXPECT_THAT(Told(FindXWhere(series_, 4.5)),
              ElementsAre("Interpolated 1.5 4.5", "Interpolated 2.7 4.5"));
}

TEST_F(Evaluation, TellsRegressionAndModelWithTheErrorOfItsFit) {
  series_.SetRegressionAlpha(1);
  series_.SetRegressionType(RegressionType::ExponentialSmoothing);  // of that alpha: the points
  series_.UpdateRegression();
  FitSettings model;
  model.Expression = "a";
  model.parameters.resize(1);
  model.parameters[0].Name = "a";
  model.parameters[0].Vary = true;
  series_.Fit().SetSettings(model, MarkModified::Yes);
  NoProgress progress;
  ApplyFit(series_, RunFit(PrepareFit(series_), progress));
  // Mean 3 of 0, 1, 8, 3 with the standard error sqrt(38 / 3 / 4).
  EXPECT_EQ(Told(EvaluateAt(series_, 1.5)).back(), "Model 1.5 3 +- 1.77951");
  EXPECT_EQ(Told(EvaluateAt(series_, 1.5))[2], "Regression 1.5 4.5");
  model.Expression = "a*x";
  model.parameters[0].Value = 2;
  series_.Fit().SetSettings(model, MarkModified::Yes);
  EXPECT_EQ(Told(FindXWhere(series_, 3)).back(), "Model 1.5 3");
}

}  // namespace
}  // namespace tarnwick
