#include "results/fit_leftovers.h"

#include <vector>

#include "base/word_list.h"
#include "results/fit_print.h"
#include "results/fit_series.h"

namespace tarnwick {

std::string LeftoverText(const TxyGraph& graph, const TSeries& series) {
  std::vector<std::string> shown;
  if (HasBands(graph, series)) shown.emplace_back("bands");
  if (HasResiduals(graph, series)) shown.emplace_back("residuals");
  if (IsPrinted(graph, series)) shown.emplace_back("printed values");
  if (shown.empty()) return {};
  return "The " + Listed(shown) + " on the graph are of this fit, too.";
}

}  // namespace tarnwick
