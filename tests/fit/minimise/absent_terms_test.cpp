#include "fit/minimise/absent_terms.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "fit/judge/fit_statistics.h"
#include "fitted_model.h"

namespace tarnwick::testing {
namespace {

struct TermRow {
  const char* what;
  double height;  ///< of a second peak that is there, in errors of the points
  const char* expression;
  std::vector<NamedValue> start;
  std::vector<std::int32_t> parameters;  ///< of the terms that may be absent
  std::vector<std::int32_t> through;     ///< of the first
};

std::vector<AbsentTerm> Found(const TermRow& row) {
  constexpr double kError = 0.05;
  const Points points = MakePoints(100, 0, 10, kError * std::sqrt(3), [&](double x) {
    return 5 * std::exp(-std::pow((x - 3) / 0.9, 2)) + 1 +
           row.height * kError * std::exp(-std::pow((x - 7) / 0.8, 2));
  });
  const auto model = MakeModel(row.expression, row.start);
  ModelResiduals residuals(*model, points.View());
  const NewtonOutcome fit = Fit(residuals);
  const FitFigures figures =
      ComputeFitFigures(residuals.Reduce(fit.outcome.p, Reduction::Orthogonal), {.count = 100});
  NoProgress progress;
  return FindAbsentTerms(residuals, fit.outcome.p, figures.statistics, progress);
}

TEST(AbsentTerms, AreThoseWithoutWhichTheFitIsAsGood) {
  const std::string peak = "a*exp(0-((x-b)/c)^2)+d";
  const std::string two = peak + "+e*exp(0-((x-f)/g)^2)";
  const std::string given = peak + "+e*exp(0-((x-7)/0.8)^2)";
  const std::vector<NamedValue> one = {{"a", 4}, {"b", 3.2}, {"c", 1}, {"d", 0.5}};
  const auto both = [&](double height, double place) {
    std::vector<NamedValue> start = one;
    start.insert(start.end(), {{"e", height}, {"f", place}, {"g", 1}});
    return start;
  };
  std::vector<NamedValue> placed = one;
  placed.push_back({"e", 0.1});
  const TermRow rows[] = {
      {"one peak", 0, peak.c_str(), one, {}, {}},
      {"a second that is not there", 0, two.c_str(), both(-0.1, 8), {4}, {5, 6}},
      {"a second of nine errors", 9, two.c_str(), both(0.3, 6.8), {}, {}},
      // What has no other parameter is measured, whether it is 0 or not.
      {"a height at a given place", 0, given.c_str(), placed, {}, {}}};
  for (const TermRow& row : rows) {
    SCOPED_TRACE(row.what);
    const std::vector<AbsentTerm> found = Found(row);
    ASSERT_EQ(found.size(), row.parameters.size());
    for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i].parameter, row.parameters[i]);
    if (found.empty()) continue;
    EXPECT_EQ(found.front().through, row.through);
    EXPECT_GT(found.front().chance, 0.2);
    EXPECT_LE(found.front().chance, 1);
    EXPECT_GT(found.front().gain, 0);
  }
}

// A bound that leaves 0 out says that the term is there.
TEST(AbsentTerms, AreNotAskedForWhereTheirBoundsLeaveZeroOut) {
  const Points points = MakePoints(60, 0, 10, 0.5, [](double) { return 1.0; });
  const struct {
    double value, low, high;
    std::size_t terms;
  } rows[] = {{0.2, -HUGE_VAL, HUGE_VAL, 1},
              {0.2, 0, HUGE_VAL, 1},
              {0.2, 1e-3, HUGE_VAL, 0},
              {-0.2, -HUGE_VAL, 0, 1},
              {-0.2, -HUGE_VAL, -1e-3, 0}};
  for (const auto& row : rows) {
    const auto model =
        MakeModel("d+e*exp(0-((x-f)/g)^2)", {{"d", 1}, {"e", row.value}, {"f", 4}, {"g", 1}});
    FitSettings settings = model->Settings();
    settings.parameters[1].Low = row.low;
    settings.parameters[1].High = row.high;
    model->SetSettings(settings, MarkModified::No);
    model->Prepare();
    ModelResiduals residuals(*model, points.View());
    const std::vector<double> values = residuals.Start();
    const FitFigures figures =
        ComputeFitFigures(residuals.Reduce(values, Reduction::Orthogonal), {.count = 60});
    NoProgress progress;
    EXPECT_EQ(FindAbsentTerms(residuals, values, figures.statistics, progress).size(), row.terms)
        << row.low << " to " << row.high;
  }
}

}  // namespace
}  // namespace tarnwick::testing
