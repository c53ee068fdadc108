#include "data/series/line_breaks.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "data/series/data_series.h"

namespace tarnwick {

void BreakBefore(TDataSeries& series, std::span<const std::size_t> places) {
  const std::int32_t first = series.LastId() - series.PointCount() + 1;
  std::vector<std::int32_t> begins;
  for (const std::size_t place : places) begins.push_back(first + static_cast<std::int32_t>(place));
  const bool broken = !begins.empty();
  series.SetGaps(broken ? PointGaps(std::move(begins), series.LastId()) : PointGaps());
  series.SetBreakAtGaps(broken);
}

}  // namespace tarnwick
