#include "results/fit_texts.h"

#include <gtest/gtest.h>

#include <cmath>

#include "base/undefined.h"

namespace tarnwick {
namespace {

TEST(FitTexts, RoundAValueAsItsErrorTells) {
  struct Row {
    double value, error;
    const char* text;
  };
  const Row rows[] = {
      {398.2468, 1.523, "398.2 ± 1.5 V"},
      {0.00453211, 0.0000213, "0.004532 ± 0.000021 V"},
      {1.2345e-9, 1.2e-11, "(1.234 ± 0.012)×10⁻⁹ V"},
      {-5.4321e12, 3e10, "(-5.432 ± 0.030)×10¹² V"},
      {12, 340, "12 ± 340 V"},
      {0.0312, 40, "0.0312 ± 40 V"},  // once "0 ± 40"
      {1.234e-7, 5e8, "1.23×10⁻⁷ ± 5.0×10⁸ V"},
      {0, 0.012, "0.000 ± 0.012 V"},
      {3.25, kUndefined, "3.25 V"},
      {3.25, 0, "3.25 V"},
  };
  for (const Row& row : rows) EXPECT_EQ(PlusMinusText(row.value, row.error, "V"), row.text);
}

// y = a + b x over (1, 1) (2, 3) (3, 2) (4, 5) (5, 4), k held: its figures by textbook formulas.
TEST(FitTexts, TellAFitWholeAndInColumns) {
  FitSettings model;
  model.Expression = "a+b*x";
  for (const char* name : {"a", "slope", "k"}) {
    ParameterSettings one;
    one.Name = name;
    one.Value = *name == 'a' ? 0.6 : *name == 's' ? 0.8 : 2e-9;
    one.Vary = *name != 'k';
    model.parameters.push_back(one);
  }
  model.parameters[1].Units = "V";
  FitResult result;
  result.outcome.why = StopReason::Converged;
  result.outcome.iterations = 2, result.outcome.evaluations = 5;
  result.names = {"a", "slope"};
  result.points_used = 5, result.points_in_range = 6;
  FitStatistics& figures = result.statistics;
  figures.sum_of_squares = 3.6, figures.degrees_of_freedom = 3;
  figures.residual_deviation = std::sqrt(1.2), figures.reduced_chi_squared = 1.2;
  figures.r_squared = 0.64, figures.adjusted_r_squared = 0.52;
  figures.aic = figures.aicc = kUndefined, figures.bic = 3.185793402;
  figures.standard_errors = {1.1489125293, 0.34641016151};
  figures.correlation = {1, -0.90453403373, -0.90453403373, 1};
  result.verdict.summary = "Converged.";
  result.verdict.notes = {"One.", "Two."};
  EXPECT_EQ(FitAsText("U", model, result),
            "Fit of DataSet \"U\"\na+b*x\n\nConverged.\nOne.\nTwo.\n\n"
            "a     = 0.600 ± 1.1\nslope = 0.80 ± 0.35 V\nk     = 2E-9 (fixed)\n"
            "(unit weights, errors scaled by the residuals)\n\n"
            "R²                  0.64\nAdjusted R²         0.52\nReduced χ²          1.2\n"
            "Residual deviation  1.09545\nSum of squares      3.6\nDegrees of freedom  3\n"
            "BIC                 3.18579\nPoints used         5 of 6\n"
            "Iterations          2\nEvaluations         5\n");
  const std::string table = FitAsTable(model, result);
  EXPECT_EQ(table.substr(0, table.find("\n\n")),
            "Parameter\tValue\tStandard error\tUnits\tVaried\na\t0.6\t1.1489125293\t\tYes\n"
            "slope\t0.8\t0.34641016151\tV\tYes\nk\t2E-9\t\t\tNo");
  EXPECT_EQ(table.substr(table.rfind("\n\n")),
            "\n\nCorrelation\ta\tslope\na\t1\t-0.90453403373\nslope\t-0.90453403373\t1\n");
  const std::vector<FittedParameter> lines = FittedParameters(model, result);
  EXPECT_EQ(ValueText(lines[1]) + ErrorText(lines[1]), "0.800.35");
  EXPECT_EQ(ErrorText(lines[2]), "fixed");
  EXPECT_EQ(ErrorText({model.parameters[0], kUndefined}), "not determined");
  EXPECT_EQ(ErrorText({model.parameters[0], 2e-9}), "0.0000000020");
  FittedParameter small{model.parameters[0], 3e-10};
  small.settings.Value = 2e-8;
  EXPECT_EQ(ValueText(small) + ' ' + ErrorText(small), "2.000×10⁻⁸ 0.030×10⁻⁸");
  result.outcome.why = StopReason::UndefinedAtStart;
  EXPECT_EQ(FigureTexts(result).front().first, "Points used");
}

}  // namespace
}  // namespace tarnwick
