#include "results/joint_fit.h"

#include <memory>

#include "base/word_list.h"
#include "graph/all_series.h"
#include "graph/xy_graph.h"
#include "results/fit_texts.h"
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

std::shared_ptr<const FitOfSeveral> Together(const TxyGraph& graph,
                                             std::span<const std::size_t> chosen,
                                             std::span<const std::string> shared,
                                             const JointFit& fit) {
  auto together = std::make_shared<FitOfSeveral>();
  together->whole = fit.whole;
  together->shared.assign(shared.begin(), shared.end());
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    const FitResult& part = fit.parts[i];
    FitOfSeveral::Member& member = together->members.emplace_back();
    member = {graph.Series(chosen[i]).SeriesName(), part.verdict, part.statistics.points,
              part.statistics.sum_of_squares, part.statistics.r_squared};
    member.verdict.notes.clear();  // they stand with the DataSet
  }
  return together;
}

/// One fit, also where each DataSet read it from a file of its own.
bool IsSame(const FitOfSeveral& one, const FitOfSeveral& other) {
  return &one == &other ||
         (one.members.size() == other.members.size() && one.whole.names == other.whole.names &&
          one.whole.values == other.whole.values);
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
  const std::shared_ptr<const FitOfSeveral> together = Together(graph, chosen, shared, fit);
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    TSeries& series = graph.Series(chosen[i]);
    fit.parts[i].together = together;
    std::vector<std::string>& notes = fit.parts[i].verdict.notes;
    notes.insert(notes.begin(), Companions(graph, chosen, i) + ": " + SharedText(*together));
    ApplyFit(series, fit.parts[i]);
    if (!IsFitted(series.Fit().Status())) series.Fit().SetStatus(FitStatus::cf_FinResult);
  }
}

std::string FitChangedText(const TxyGraph& graph, const TSeries& series) {
  const LastFit& last = series.Fit().Last();
  if (!last.Holds() || !last.record->result->together) return ChangedText(last);
  const FitOfSeveral& together = *last.record->result->together;
  std::size_t found = 0;
  for (const TSeries& member : AllSeries(graph)) {
    const LastFit& other = member.Fit().Last();
    if (!other.record || !other.record->result->together) continue;
    if (!IsSame(*other.record->result->together, together)) continue;
    ++found;
    if (!other.Holds())
      return "DataSet \"" + member.SeriesName() + "\", fitted at once with this, changed since.";
  }
  if (found >= together.members.size()) return {};
  return "Not all DataSets of this fit are as it left them.";
}

}  // namespace tarnwick
