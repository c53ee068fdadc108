#include "analysis/peak_figures.h"

#include <cmath>
#include <numeric>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/scipy_rows.h"

namespace tarnwick {
namespace {

using ::testing::DoubleNear;
using ::testing::ElementsAre;

// Prominences and widths as scipy 1.10.1 gives them (find_peaks, peak_prominences, peak_widths at half); where it has the widths
// in samples, X here is the sample's number.
TEST(PeakFigures, ProminencesAndWidthsAreThoseOfScipy) {
  const std::vector<double> y = {0, 2, 1, 5, 5, 3, 4, 1, 1.5, 0, 3, 0};
  std::vector<double> x(y.size());
  for (std::size_t i = 0; i < x.size(); ++i) x[i] = static_cast<double>(i);
  const PeakCurve curve{x, y};
  const std::vector<Summit> summits = FindSummits(curve, 0);
  std::vector<std::size_t> places;
  std::vector<double> prominences;
  for (const Summit& summit : summits) {
    places.push_back(summit.index);
    prominences.push_back(summit.prominence);
  }
  EXPECT_THAT(places, ElementsAre(1, 3, 6, 8, 10));
  EXPECT_THAT(prominences, ElementsAre(1, 5, 1, 0.5, 3));
  std::vector<double> widths;
  for (const PeakFigures& peak : MeasurePeaks(curve, summits)) widths.push_back(peak.width);
  EXPECT_THAT(widths, testing::Pointwise(DoubleNear(1e-12), {0.75, 4.125, 2.0 / 3, 2.0 / 3, 1.0}));
  EXPECT_EQ(FindSummits(curve, 1).size(), 4u);
}

TEST(PeakFigures, OfMeasuredValuesAreThoseOfScipy) {
  const std::vector<double> y = rows::Measured();
  std::vector<double> x(y.size());
  std::iota(x.begin(), x.end(), 0.0);
  std::vector<double> figures;
  for (const PeakFigures& peak : MeasurePeaks({x, y}, FindSummits({x, y}, 0.5)))
    figures.insert(figures.end(), {peak.x, peak.prominence, peak.width});
  EXPECT_THAT(figures, testing::Pointwise(DoubleNear(1e-12), rows::kPeaks));
}

TEST(PeakFigures, AreasReachFromValleyToValley) {
  const std::vector<double> x = {0, 1, 2, 4, 5, 7, 8};
  const std::vector<double> y = {1, 0, 6, 1, 3, 0, 1};
  const std::vector<PeakFigures> peaks = MeasurePeaks({x, y}, FindSummits({x, y}, 0));
  ASSERT_EQ(peaks.size(), 2u);
  EXPECT_EQ(peaks[0].left_valley, 1);
  EXPECT_EQ(peaks[0].right_valley, 4);
  EXPECT_EQ(peaks[0].area, 3 + 7);
  EXPECT_EQ(peaks[1].area, 2 + 3);
  EXPECT_DOUBLE_EQ(peaks[0].asymmetry, (2 * 3 / 5.0) / 0.5);
}

}  // namespace
}  // namespace tarnwick
