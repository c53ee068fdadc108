#include "data/series/extremes.h"

#include <gtest/gtest.h>

#include "data/series/data_series.h"

namespace tarnwick {
namespace {

TEST(Extremes, SmallestPositiveValuesServeLogarithmicAxes) {
  TDataSeries series;
  const auto smallest_x = [&] { return SmallestPositiveX(series.Points(), series.GetExtremes()); };
  const auto smallest_y = [&] {
    return SmallestPositiveY(series.Points(), series.GetBaseLine(), series.GetExtremes());
  };
  series.AddPoint(-1, -5);
  EXPECT_EQ(smallest_x(), -1);
  EXPECT_EQ(smallest_y(), -5);
  series.AddPoint(0, 0.7);
  series.AddPoint(0.3, 0.2);
  EXPECT_EQ(smallest_x(), double{0.3F});
  EXPECT_EQ(smallest_y(), double{0.2F});
  series.ShiftX(1e-200 + 1);
  EXPECT_EQ(smallest_x(), 1);
}

}  // namespace
}  // namespace tarnwick
