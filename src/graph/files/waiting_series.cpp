#include "graph/files/waiting_series.h"

#include <memory>

#include "graph/xy_graph.h"

namespace tarnwick {

TSeries& AddWaitingSeries(TxyGraph& graph, const TDSInfo& source, const std::string& name,
                          XMeaning x) {
  const bool first = graph.SeriesCount() == 0;
  TSeries& series = graph.AddSeries(std::make_unique<TSeries>());
  series.SetSeriesName(name);
  series.SetDuplicatesAllowed(true);
  series.Source() = source;
  if (first && x == XMeaning::Moments) {
    graph.Axis(AxisId::X).SetShowAsTime(true);
    SetLook(graph.Axis(AxisId::X), &AxisLook::DateTimeFormat, "hh:nn:ss");
  }
  return series;
}

}  // namespace tarnwick
