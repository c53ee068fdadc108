#include "results/area_figure.h"

#include "analysis/derived.h"
#include "graph/line_way.h"

namespace tarnwick {

AreaFigure FindArea(const TSeries& series) {
  const LineWay way = WayToCompute(series);
  AreaFigure figure{AreaOf(series, way), {}};
  if (!way.order.empty()) {
    figure.told = "X of \"" + series.SeriesName() +
                  "\" turns back: the area is what the line encloses, closed from its last point "
                  "straight to its first, as often as it goes round it (shoelace formula).";
  } else if (!way.breaks.empty()) {
    figure.told = BrokenAt(series, way.breaks.size()) + ": the area goes straight across.";
  }
  return figure;
}

}  // namespace tarnwick
