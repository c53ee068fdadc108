#include "graph/line_way.h"

#include <cstdint>

#include "base/number_text.h"
#include "data/points/arrival_order.h"

namespace tarnwick {
namespace {

PointGaps ShownGaps(const TSeries& series) {
  return series.Settings().BreakAtGaps ? series.Gaps() : PointGaps();
}

LineWay WayInX(const TSeries& series) {
  return {{}, BreaksAlongChain(series.Points(), ShownGaps(series))};
}

}  // namespace

bool TurnsBack(const TSeries& series) {
  if (series.Style().line_order != LineOrder::AsTheyCame) return false;
  bool later = false, earlier = false;
  std::int32_t last = 0;
  series.Points().ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) {
      const std::int32_t id = view.chunk->Id(i);
      later = later || (last != 0 && id > last);
      earlier = earlier || (last != 0 && id < last);
      last = id;
    }
  });
  return later && earlier;
}

LineWay WayOf(const TSeries& series) {
  if (series.Style().line_order != LineOrder::AsTheyCame || IdsAscend(series.Points()))
    return WayInX(series);
  LineWay way;
  way.order = ArrivalOrder(series.Points());
  way.breaks = BreaksInOrder(series.Points(), way.order, ShownGaps(series));
  return way;
}

LineWay WayToCompute(const TSeries& series) {
  return TurnsBack(series) ? WayOf(series) : WayInX(series);
}

std::string BrokenAt(const TSeries& series, std::size_t gaps) {
  return "The line of \"" + series.SeriesName() + "\" is broken at " +
         Counted(static_cast<std::int64_t>(gaps), "gap");
}

}  // namespace tarnwick
