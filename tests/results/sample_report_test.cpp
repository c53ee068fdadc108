#include "results/sample_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/error.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

using ::testing::HasSubstr;

class SampleReports : public ::testing::Test {
 protected:
  SampleReports() {
    first_.SetSeriesName("A");
    second_.SetSeriesName("B");
    for (int x = 0; x < 21; ++x) {
      first_.AddPoint(x, x == 20 ? 100 : x % 5);
      second_.AddPoint(x, 1000 + x);
    }
    second_.SetZeroValue(1000);  // less its base line
    second_.AddPoint(30, kUndefined);
  }
  TSeries first_;
  TSeries second_;
};

TEST_F(SampleReports, TellOfTheTestsAndWhatWasLeftOut) {
  const SampleReport report = CompareSeries(first_, second_);
  EXPECT_EQ(report.rows[1].second, 10);
  ASSERT_EQ(report.sentences.size(), 4u);
  EXPECT_THAT(report.sentences[2], HasSubstr("Both have equal values"));
  EXPECT_EQ(report.sentences[3], "1 point without a value left out.");
  TSeries none;
  EXPECT_THROW(CompareSeries(first_, none), Error);
  TSeries twin;
  twin.SetState(second_.State());
  EXPECT_THAT(CompareSeries(second_, twin).sentences[0], HasSubstr("in 100 % of cases."));
  EXPECT_THAT(CompareSeries(twin, twin).sentences[0], HasSubstr("nothing to compare"));
}

TEST_F(SampleReports, DrawABoxWhatLiesBeyondAndBarsOfEach) {
  TxyGraph picture;
  DrawSamples(picture, first_, second_);
  ASSERT_EQ(picture.SeriesCount(), 6u);
  const Extremes box = picture.Series(0).GetExtremes();
  EXPECT_EQ(box.y_max, 4);  // the whisker
  EXPECT_DOUBLE_EQ(box.x_min + box.x_max, 2);
  EXPECT_EQ(picture.Series(1).PointCount(), 2);  // 100, and the mean
  EXPECT_EQ(picture.Series(3).GetExtremes().y_max, 20);
  EXPECT_EQ(picture.Series(4).PointCount(), 1);
  EXPECT_LT(picture.Series(2).GetExtremes().x_max, 2);  // bars stay beside their box
  double lengths[2] = {0, 0};
  for (const std::size_t i : {0u, 1u}) {
    const SeriesStyle& outline = picture.Series(3 * i).Style();
    const SeriesStyle& symbols = picture.Series(3 * i + 1).Style();
    EXPECT_TRUE(outline.connect_points && !outline.show_symbols && outline.show_in_legend != 0);
    EXPECT_TRUE(symbols.show_symbols && !symbols.connect_points && symbols.show_in_legend == 0);
    const TSeries& bars = picture.Series(3 * i + 2);
    EXPECT_TRUE(bars.Style().connect_points);
    const double ground = bars.Points().Front().x;
    bars.Points().ForEachPoint([&](double x, double) { lengths[i] += x - ground; });
    const Extremes extremes = bars.GetExtremes();
    EXPECT_TRUE(extremes.y_min == 0 && extremes.y_max == 100) << "of all values, beside each other";
  }
  EXPECT_NEAR(lengths[0], lengths[1], 1e-6);  // both have shares of 1 in all
}

}  // namespace
}  // namespace tarnwick
