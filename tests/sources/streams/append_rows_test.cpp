#include "sources/streams/append_rows.h"

#include <gtest/gtest.h>

#include "data/points/arrival_order.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

StreamRows Rows(std::vector<double> x, std::vector<std::size_t> breaks) {
  StreamRows rows;
  rows.y = {x};
  rows.x = std::move(x);
  rows.breaks = std::move(breaks);
  return rows;
}

TEST(AppendRows, BreaksTheLineWhereTheSourceWasAway) {
  TDataSeries series;
  AppendRows(series, Rows({1}, {0}), {});
  EXPECT_FALSE(series.Settings().BreakAtGaps) << "before the first point";
  AppendRows(series, Rows({2, 3, 4}, {0, 0, 2}), {});  // told twice of one row
  AppendRows(series, Rows({5, 6}, {1}), {});
  EXPECT_EQ(BreaksAlongChain(series.Points(), series.Gaps()), (std::vector<std::size_t>{1, 3, 5}));
  EXPECT_TRUE(series.Settings().BreakAtGaps);
}

TEST(AppendRows, KeepsTheLastToComeWhateverTheirX) {
  TDataSeries series;
  series.Source().KeepPoints = 2;
  AppendRows(series, Rows({5, 4, 9, 1}, {}), {});
  ASSERT_EQ(series.PointCount(), 2);
  EXPECT_EQ(series.Points().At(0).x, 1);
  EXPECT_EQ(series.Points().At(1).x, 9);
  EXPECT_EQ(series.GetExtremes().x_max, 9);
}

}  // namespace
}  // namespace tarnwick
