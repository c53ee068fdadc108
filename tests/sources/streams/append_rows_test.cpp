#include "sources/streams/append_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
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

TEST(AppendRows, KeepTheLastOfWhateverComes) {
  std::mt19937 random(4);
  std::uniform_int_distribution<int> few(0, 40);
  for (const int kept : {1, 2, 7, 100}) {
    for (const bool in_order : {true, false}) {
      TDataSeries series;
      series.SetDuplicatesAllowed(true);
      series.Source().KeepPoints = kept;
      std::vector<double> came;
      for (int batch = 0; batch < 12; ++batch) {
        StreamRows rows;
        for (int i = few(random) % 9; i > 0; --i)
          rows.x.push_back(in_order ? static_cast<double>(came.size() + rows.x.size())
                                    : few(random));
        rows.y = {rows.x};
        came.insert(came.end(), rows.x.begin(), rows.x.end());
        AppendRows(series, rows, {});
        const auto most = std::min<std::size_t>(came.size(), static_cast<std::size_t>(kept));
        std::vector<double> last(came.end() - static_cast<std::ptrdiff_t>(most), came.end());
        std::ranges::sort(last);
        EXPECT_EQ(XValues(series.Points()), last) << kept;
        if (!last.empty()) {
          EXPECT_EQ(series.GetExtremes().x_max, last.back());
        }
      }
    }
  }
}

}  // namespace
}  // namespace tarnwick
