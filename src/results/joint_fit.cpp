#include "results/joint_fit.h"

#include "base/word_list.h"
#include "graph/xy_graph.h"
#include "results/fitted_model.h"

namespace tarnwick {

namespace {

constexpr std::size_t kMostNamed = 5;

std::string Companions(const TxyGraph& graph, std::span<const std::size_t> chosen,
                       std::size_t part) {
  std::vector<std::string> others;
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    if (i != part) others.push_back('"' + graph.Series(chosen[i]).SeriesName() + '"');
  }
  return "Fitted at once with " + Listed(others, kMostNamed);
}

std::string Shared(std::span<const std::string> shared) {
  if (shared.empty()) return ": no parameter is shared.";
  return ": " + Listed(shared, kMostNamed) + (shared.size() == 1 ? " has" : " have") +
         " one value in all.";
}

}  // namespace

std::vector<FitJob> PrepareJointFit(const TxyGraph& graph, std::span<const std::size_t> chosen,
                                    const FitRunOptions& options) {
  std::vector<FitJob> jobs;
  for (const std::size_t index : chosen) {
    jobs.push_back(PrepareFit(graph.Series(index), options));
    jobs.back().data_set = graph.Series(index).SeriesName();
  }
  return jobs;
}

void ApplyJointFit(TxyGraph& graph, std::span<const std::size_t> chosen,
                   std::span<const std::string> shared, JointFit& fit) {
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    TSeries& series = graph.Series(chosen[i]);
    std::vector<std::string>& notes = fit.parts[i].verdict.notes;
    notes.insert(notes.begin(), Companions(graph, chosen, i) + Shared(shared));
    ApplyFit(series, fit.parts[i]);
    if (!IsFitted(series.Fit().Status())) series.Fit().SetStatus(FitStatus::cf_FinResult);
  }
}

}  // namespace tarnwick
