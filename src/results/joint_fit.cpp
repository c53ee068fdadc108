#include "results/joint_fit.h"

#include "graph/xy_graph.h"
#include "results/fitted_model.h"

namespace tarnwick {

std::vector<FitJob> PrepareJointFit(const TxyGraph& graph, std::span<const std::size_t> chosen,
                                    const FitRunOptions& options) {
  std::vector<FitJob> jobs;
  for (const std::size_t index : chosen) {
    jobs.push_back(PrepareFit(graph.Series(index), options));
    jobs.back().data_set = graph.Series(index).SeriesName();
  }
  return jobs;
}

void ApplyJointFit(TxyGraph& graph, std::span<const std::size_t> chosen, const JointFit& fit) {
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    TSeries& series = graph.Series(chosen[i]);
    ApplyFit(series, fit.parts[i]);
    if (!IsFitted(series.Fit().Status())) series.Fit().SetStatus(FitStatus::cf_FinResult);
  }
}

}  // namespace tarnwick
