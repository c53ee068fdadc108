#include "results/area_figure.h"

#include <cstdint>

#include "analysis/derived.h"
#include "base/number_text.h"
#include "graph/line_way.h"

namespace tarnwick {

AreaFigure FindArea(const TSeries& series) {
  const LineWay way = WayToCompute(series);
  const std::string name = "\"" + series.SeriesName() + "\"";
  if (TurnsBack(series)) {
    return {AreaOf(series, way),
            "X of " + name +
                " turns back: the area is what the line encloses, closed from its last point "
                "straight to its first, as often as it goes round it (shoelace formula)."};
  }
  AreaFigure figure{AreaOf(series, way), {}};
  if (!way.breaks.empty()) {
    figure.told = "The line of " + name + " is broken at " +
                  Counted(static_cast<std::int64_t>(way.breaks.size()), "gap") +
                  ": the area goes straight across.";
  }
  return figure;
}

}  // namespace tarnwick
