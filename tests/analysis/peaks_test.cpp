#include "analysis/peaks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"

namespace tarnwick {
namespace {

using ::testing::ElementsAre;

std::vector<double> PeaksIn(TDataSeries& series, const PeakSearch& search) {
  std::vector<double> found;
  for (const Peak& peak : FindPeaks(series, search)) found.push_back(peak.x);
  return found;
}

TEST(FindPeaks, ComparesEachPointWithItsNeighboursAlone) {
  const struct {
    const char* name;
    std::vector<double> y;  // at X 0, 1, 2 ...
    PeakSearch search;
    std::vector<double> found;
  } kRows[] = {
      {"every strict maximum", {9, 1, 2, 1, 3, 0, 9}, {}, {2, 4}},
      {"a flat top is none", {0, 1, 1, 0, 0}, {}, {}},
      {"the noise is exceeded, not met", {0, 1, 0, 1.5, 0}, {.noise = 1}, {3}},
      {"on both sides", {0, 2, 1.5, 0}, {.noise = 1}, {}},
      {"from the left margin on", {0, 1, 0, 1, 0, 1, 0}, {.left = 1.5}, {3, 5}},
      {"no triple begins at the right margin", {0, 1, 0, 1, 0, 1, 0}, {.right = 2}, {1}},
      {"margins that cross", {0, 1, 0, 1, 0}, {.left = 2, .right = 1}, {}},
      {"a value that is undefined", {0, 1, kUndefined, 1, 0, 1, 0}, {}, {5}},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.name);
    TDataSeries series;
    for (std::size_t i = 0; i < row.y.size(); ++i)
      series.AddPoint(static_cast<double>(i), row.y[i]);
    EXPECT_EQ(PeaksIn(series, row.search), row.found);
  }
}

TEST(FindPeaks, LooksAtWhatTheRegressionMadeLessTheBaseLine) {
  TDataSeries series;
  for (const double x : {0, 1, 2, 3, 4}) series.AddPoint(x, 2 * x + (x == 3 ? 1 : 0));
  EXPECT_THAT(PeaksIn(series, {}), ElementsAre());
  series.SetBaseLineSlope(2);
  EXPECT_THAT(PeaksIn(series, {}), ElementsAre(3));
  series.SetRegressionAlpha(0.1);
  series.SetRegressionType(RegressionType::ExponentialSmoothing);
  EXPECT_THAT(PeaksIn(series, {}), ElementsAre());
}

TEST(FindPeaks, SpansChunks) {
  constexpr int kPoints = 20'001;
  TDataSeries series;
  for (int x = 0; x < kPoints; ++x) series.AddPoint(x, x % 2);
  EXPECT_EQ(PeaksIn(series, {.left = 0.5}).size(), kPoints / 2 - 1u);
}

TEST(FindPeaks, TellsWhatItHasNoDataFor) {
  TDataSeries series;
  series.SetSeriesName("Rate");
  const auto told = [&](const PeakSearch& search) -> std::string {
    try {
      FindPeaks(series, search);
    } catch (const Error& error) {
      return error.what();
    }
    return {};
  };
  EXPECT_EQ(told({}), "No Data Found in DataSet Rate!");
  for (const double x : {1, 2, 3}) series.AddPoint(x, x);
  EXPECT_EQ(told({}), "");
  EXPECT_EQ(told({.left = 1.5}), "No Data Found in the Margins for DataSet Rate!");
}

}  // namespace
}  // namespace tarnwick
