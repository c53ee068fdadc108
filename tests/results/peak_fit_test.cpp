#include "results/peak_fit.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/progress.h"
#include "graph/xy_graph.h"
#include "results/peak_groups.h"
#include "results/peak_model.h"
#include "results/peak_table.h"
#include "results/peak_table_text.h"

namespace tarnwick {
namespace {

constexpr double kStep = 0.05;

struct ShapeCase {
  PeakShape shape;
  double (*of_unit)(double);  // of height and width 1
};

/// Two peaks of a shape on a line, that of unit width scaled to each.
class PeakFit : public ::testing::TestWithParam<ShapeCase> {
 protected:
  PeakFit() {
    auto series = std::make_unique<TSeries>();
    series->SetSeriesName("S");
    series_ = &graph_.AddSeries(std::move(series));
    for (double x = 0; x < 60; x += kStep) {
      const auto shape = GetParam().of_unit;
      series_->AddPoint(x, 5 + 0.1 * x + 40 * shape((x - 20) / 3) + 20 * shape((x - 34) / 5) +
                               0.01 * std::sin(1000 * x));
    }
  }
  /// What the last fit told of that parameter.
  double ErrorOf(const std::string& name) const {
    const FitResult& result = *series_->Fit().Result();
    const auto place = std::ranges::find(result.names, name) - result.names.begin();
    return result.statistics.standard_errors.at(static_cast<std::size_t>(place));
  }
  TxyGraph graph_;
  TSeries* series_;
};

TEST_P(PeakFit, FindsWhatThePeaksWereMadeFrom) {
  const PeakTable table = MakePeakTable(graph_, *series_, {.times_noise = 100});
  ASSERT_EQ(table.peaks.size(), 2u);
  series_->Fit().SetSettings(PeakModel(table.peaks, GetParam().shape, {}), MarkModified::Yes);
  NoProgress progress;
  ApplyFit(*series_, RunFit(PrepareFit(*series_, {.points = FitPointChoice::All}), progress));
  const std::vector<FittedPeak> fitted = FittedPeaks(*series_);
  ASSERT_EQ(fitted.size(), 2u);
  const double expected[2][3] = {{20, 40, 3}, {34, 20, 5}};
  for (int i = 0; i < 2; ++i) {
    const FittedPeak& peak = fitted[static_cast<std::size_t>(i)];
    EXPECT_NEAR(peak.x.value, expected[i][0], 0.01);
    EXPECT_NEAR(peak.height.value, expected[i][1], 0.1);
    EXPECT_NEAR(peak.width.value, expected[i][2], 0.02);
    double area = 0;
    for (double u = -2000; u < 2000; u += 0.01) area += 0.01 * GetParam().of_unit(u);
    EXPECT_NEAR(peak.area.value / (area * expected[i][1] * expected[i][2]), 1, 0.01);
    EXPECT_GT(peak.area.error, 0);
    EXPECT_LT(peak.area.error, 0.01 * peak.area.value);
    // What is a parameter of the model has that one's error.
    const bool voigt = GetParam().shape == PeakShape::Voigt;
    const std::string number = std::to_string(i + 1);
    EXPECT_NEAR(peak.x.error / ErrorOf("c" + number), 1, 1e-6);
    if (voigt) {
      EXPECT_NEAR(peak.area.error / ErrorOf("A" + number), 1, 1e-6);
    } else {
      EXPECT_NEAR(peak.height.error / ErrorOf("h" + number), 1, 1e-6);
      EXPECT_NEAR(peak.width.error / ErrorOf("w" + number), 1, 1e-6);
    }
  }
  for (int i = 0; i < 2; ++i) AddPeakParts(graph_, *series_);
  EXPECT_EQ(graph_.SeriesCount(), 3u);  // the second time in place of the first
  for (int i = 0; i < 2; ++i) {
    const PointChain& part = graph_.Series(static_cast<std::size_t>(i) + 1).Points();
    double greatest = 0;
    double place = 0;
    for (std::size_t k = 0; k < part.Size(); ++k) {
      const double above_line = part.At(k).y - 5 - 0.1 * part.At(k).x;
      if (above_line > greatest) greatest = above_line, place = part.At(k).x;
    }
    EXPECT_NEAR(place, expected[i][0], 0.3);
    EXPECT_NEAR(greatest, expected[i][1], 0.5);
  }
}

double Gauss(double u) {
  return std::exp(-4 * std::log(2) * u * u);
}
double Lorentz(double u) {
  return 1 / (1 + 4 * u * u);
}

double Mixed(double u) {
  return 0.3 * Lorentz(u) + 0.7 * Gauss(u);
}

INSTANTIATE_TEST_SUITE_P(Shapes, PeakFit,
                         ::testing::Values(ShapeCase{PeakShape::Gauss, Gauss},
                                           ShapeCase{PeakShape::Lorentz, Lorentz},
                                           ShapeCase{PeakShape::PseudoVoigt, Mixed},
                                           ShapeCase{PeakShape::Voigt, Gauss}));

TEST(PeakModel, HoldsWhatNoFitCanVary) {
  const std::vector<PeakFigures> many(MostFittedPeaks(PeakShape::Voigt) + 1);
  EXPECT_FALSE(PeakModel(many, PeakShape::Voigt, {}).parameters.back().Vary);
  EXPECT_THROW(PeakModel({}, PeakShape::Gauss, {}), Error);
}

/// The second of two peaks, the first of which is flat, looked at as a curve.
TEST(PeakModel, FiguresAreThoseOfItsCurve) {
  const struct {
    PeakShape shape;
    std::vector<double> values;
  } rows[] = {{PeakShape::Gauss, {3, 50, 4}},
              {PeakShape::Lorentz, {3, 50, 1}},
              {PeakShape::PseudoVoigt, {3, 50, 2, 0.3}},
              {PeakShape::Voigt, {12, 50, 1.5, 0.01}},
              {PeakShape::Voigt, {12, 50, 1.5, 0.7}},
              {PeakShape::Voigt, {12, 50, 0.4, 1.2}}};
  PeakFigures peak;
  peak.x = 50, peak.height = 3, peak.width = 4, peak.right_valley = 100;
  std::vector<double> x;
  for (int i = 0; i <= 100'000; ++i) x.push_back(0.001 * i);
  for (const auto& row : rows) {
    FitSettings model = PeakModel(std::vector<PeakFigures>(2, peak), row.shape, {});
    const std::size_t count = row.values.size();
    ASSERT_EQ(model.parameters.size(), 2 + 2 * count);
    model.parameters[0].Value = model.parameters[1].Value = model.parameters[2].Value = 0;
    for (std::size_t i = 0; i < count; ++i) model.parameters[2 + count + i].Value = row.values[i];
    const std::vector<double> y = ValuesAs(model, model.Expression, x);
    const double height = *std::ranges::max_element(y);
    const auto high = std::ranges::count_if(y, [&](double value) { return 2 * value >= height; });
    double area = 0;
    for (const double value : y) area += 0.001 * value;
    const std::optional<Recognised> found = Recognise(model);
    ASSERT_TRUE(found);
    const FittedPeak fitted = FittedPeakOf(model, *found, 1, nullptr);
    EXPECT_EQ(fitted.x.value, 50);
    EXPECT_NEAR(fitted.height.value / height, 1, 1e-6) << row.values[2];
    EXPECT_NEAR(fitted.width.value, 0.001 * static_cast<double>(high), 0.004) << row.values[2];
    EXPECT_NEAR(fitted.area.value / area, 1, 0.02) << row.values[2];
  }
}

TEST(PeakGroups, FindWhatManyPeaksWereMadeFrom) {
  TxyGraph graph;
  TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
  for (double x = 0; x < 500; x += 0.1) {
    double y = 3 + 0.01 * x + 0.05 * std::sin(1000 * x);
    for (int i = 0; i < 24; ++i) y += (10 + i) * Lorentz((x - 20 - 20 * i) / 4);
    series.AddPoint(x, y);
  }
  const PeakTable table = MakePeakTable(graph, series, {.times_noise = 30});
  ASSERT_EQ(table.peaks.size(), 24u);
  series.Fit().SetSettings(PeakModel(table.peaks, PeakShape::Lorentz, {}), MarkModified::Yes);
  NoProgress progress;
  const PeakGroupsFit fit =
      FitPeakGroups(PrepareFit(series, {.points = FitPointChoice::All}), progress);
  ASSERT_EQ(fit.peaks.size(), 24u);
  for (int i = 0; i < 24; ++i) {
    const FittedPeak& peak = fit.peaks[static_cast<std::size_t>(i)];
    EXPECT_NEAR(peak.x.value, 20 + 20 * i, 0.01);
    EXPECT_NEAR(peak.height.value, 10 + i, 0.05);
    EXPECT_NEAR(peak.width.value, 4, 0.05);
    EXPECT_GT(peak.width.error, 0);
  }
  EXPECT_EQ(fit.told.find("still moved"), std::string::npos) << fit.told;
  EXPECT_TRUE(fit.told.starts_with("Fitted in 3 groups")) << fit.told;
  EXPECT_FALSE(fit.verdict.trustworthy) << "a sine is left";
  EXPECT_EQ(fit.verdict.summary.find("Converged"), 0u) << fit.verdict.summary;
  EXPECT_EQ(FittedTableText(fit.peaks, ',').find("x,x_error,height"), 0u);
}

}  // namespace
}  // namespace tarnwick
