#include "results/peak_fit.h"

#include <cmath>

#include <gtest/gtest.h>

#include "analysis/fits/fit_run.h"
#include "base/error.h"
#include "base/progress.h"
#include "graph/xy_graph.h"
#include "results/peak_groups.h"
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
  TxyGraph graph_;
  TSeries* series_;
};

TEST_P(PeakFit, FindsWhatThePeaksWereMadeFrom) {
  const PeakTable table = MakePeakTable(graph_, *series_, {.times_noise = 100});
  ASSERT_EQ(table.peaks.size(), 2u);
  series_->Fit().SetSettings(PeakModel(table.peaks, GetParam().shape, {}), true);
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
  series.Fit().SetSettings(PeakModel(table.peaks, PeakShape::Lorentz, {}), true);
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
