#include "results/fit_leftovers.h"

#include <vector>

#include "base/word_list.h"
#include "fit/judge/fit_bands.h"
#include "graph/graph_update.h"
#include "graph/xy_graph.h"
#include "results/fit_print.h"
#include "results/fit_series.h"
#include "results/joint_fit.h"

namespace tarnwick {
namespace {

/// "The bands and printed values on the graph are of "; empty where there are none.
std::string Leftovers(const TxyGraph& graph, const TSeries& series) {
  std::vector<std::string> shown;
  if (!BandLevels(graph, series).empty()) shown.emplace_back("bands");
  if (HasResiduals(graph, series)) shown.emplace_back("residuals");
  if (IsPrinted(graph, series)) shown.emplace_back("printed values");
  return shown.empty() ? std::string() : "The " + Listed(shown) + " on the graph are of ";
}

}  // namespace

std::string LeftoverText(const TxyGraph& graph, const TSeries& series) {
  const std::string are_of = Leftovers(graph, series);
  return are_of.empty() ? are_of : are_of + "this fit, too.";
}

std::string OutdatedText(const TxyGraph& graph, const TSeries& series) {
  if (!series.Fit().Last().record || FitChangedText(graph, series).empty()) return {};
  const std::string are_of = Leftovers(graph, series);
  return are_of.empty() ? are_of
                        : are_of + "a fit of \"" + series.SeriesName() + "\" that holds no more.";
}

void RenewLeftovers(TxyGraph& graph, const TSeries& series) {
  const FitResult* const result = series.Fit().Result().get();
  if (result == nullptr || Failed(result->outcome.why)) return;
  const GraphUpdate update(graph);
  if (HasResiduals(graph, series)) AddResiduals(graph, series, ResidualsName(series));
  if (HasErrors(result->statistics)) {
    for (const double level : BandLevels(graph, series)) AddBands(graph, series, level);
  }
  RenewPrinted(graph, series);
}

}  // namespace tarnwick
