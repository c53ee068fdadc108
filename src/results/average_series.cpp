#include "results/average_series.h"

#include <memory>
#include <utility>
#include <vector>

#include "analysis/average.h"
#include "base/error.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::string AverageName(const TxyGraph& graph, const TSeries& reference) {
  return FreeSeriesName(graph, "Average_" + reference.SeriesName());
}

TSeries& AddAverage(TxyGraph& graph, const TSeries& reference,
                    std::span<const std::size_t> averaged, const NewSeries& wanted) {
  if (averaged.empty()) throw Error("There is no DataSet to average.");
  std::vector<const TDataSeries*> sources;
  for (const std::size_t index : averaged) sources.push_back(&graph.Series(index));
  auto mean = std::make_unique<TSeries>();
  Average(reference, sources, *mean);
  return AddNewSeries(graph, std::move(mean), reference, wanted);
}

std::string AverageText(const TxyGraph& graph, std::span<const std::size_t> averaged) {
  bool errors = false;
  bool lines = false;
  for (const std::size_t index : averaged) {
    const TSeries& series = graph.Series(index);
    errors = errors || HasYErrors(series.Errors()) || HasXErrors(series.Errors());
    const BaseLine line = series.GetBaseLine();
    lines = lines || line.offset != 0 || line.slope != 0;
  }
  if (!errors && !lines) return {};
  return std::string(!errors ? "Base lines"
                     : lines ? "Errors and base lines"
                             : "Errors") +
         " of the DataSets do not go into their mean.";
}

}  // namespace tarnwick
