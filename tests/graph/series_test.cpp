#include "graph/series.h"

#include <gtest/gtest.h>

#include <vector>

#include "data/points/point_gaps.h"
#include "graph/thinning/arrival_line.h"

namespace tarnwick {
namespace {

// By X a line has the points' own chain, broken at gaps or not; only points that came in another order have one of their own.
TEST(SeriesPath, IsOfArrivalsOnlyWhereTheirOrderIsAnother) {
  struct Row {
    LineOrder order;
    std::vector<double> x;
    bool gaps, path, arrivals;
  };
  const std::vector<double> rising{1, 2, 3, 4}, back{1, 3, 4, 2};
  for (const Row& row : {Row{LineOrder::ByX, back, false, false, false},
                         Row{LineOrder::ByX, back, true, true, false},
                         Row{LineOrder::ByX, rising, true, true, false},
                         Row{LineOrder::AsTheyCame, rising, false, true, false},
                         Row{LineOrder::AsTheyCame, back, false, true, true},
                         Row{LineOrder::AsTheyCame, back, true, true, true}}) {
    TSeries series;
    for (const double x : row.x) series.AddPoint(x, 1);
    SeriesStyle style;
    style.line_order = row.order;
    series.SetStyle(style);
    series.SetGaps(PointGaps({3}, series.LastId()));  // before the third that came
    series.SetBreakAtGaps(row.gaps);
    const LinePath* const path = series.Path();
    ASSERT_EQ(path != nullptr, row.path);
    if (path == nullptr) continue;
    EXPECT_EQ(path->arrivals != nullptr, row.arrivals);
    const std::size_t breaks = row.arrivals ? path->arrivals->Breaks().size() : path->breaks.size();
    EXPECT_EQ(breaks > 0, row.gaps);
  }
}

}  // namespace
}  // namespace tarnwick
