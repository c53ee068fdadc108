#include "results/model_comparison.h"

#include <utility>

#include "analysis/fits/fit_run.h"
#include "analysis/fits/start_values.h"
#include "base/error.h"
#include "base/number_text.h"
#include "base/undefined.h"

namespace tarnwick {
namespace {

/// Below this chance does not explain what a larger model gains.
constexpr double kRareGain = 0.05;

/// A figure of a fit that did not fail.
std::string Figure(const FitResult& result, double value) {
  constexpr int kDigits = 6;
  return Failed(result.outcome.why) ? "-" : GeneralText(value, kDigits);
}

std::string TextOf(const NestedTest& test, const ModelComparison& compared) {
  const std::string ratio = compared.models[test.smaller].name + " within " +
                            compared.models[test.larger].name + ": F(" +
                            std::to_string(test.added) + ", " + std::to_string(test.free) +
                            ") = " + GeneralText(test.ratio, 5);
  if (IsUndefined(test.probability)) {
    return ratio +
           ", without a probability: the larger function takes on the smaller one's curve with "
           "more than one set of values, so that chance gains more than F, and AICc, allow for.";
  }
  return ratio + ", probability " + GeneralText(test.probability, 4) +
         (test.probability < kRareGain ? ": more than chance gains."
                                       : ": no more than chance gains.");
}

/// Why there is no guess; empty where the job begins with one.
std::string TakeGuess(FitJob& job) {
  constexpr const char* kAsGiven = " It started from the values that it has.";
  try {
    const auto guess = GuessStart(job);
    if (!guess) return std::string("The points suggest no starting values.") + kAsGiven;
    job.settings.parameters = *guess;
    return {};
  } catch (const Error& error) {
    return error.what() + std::string(kAsGiven);
  }
}

}  // namespace

std::optional<ModelComparison> CompareModels(const DataState& data, std::vector<NamedModel> models,
                                             const FitRunOptions& options, Progress& progress) {
  ModelComparison compared;
  std::vector<FitJob> jobs;
  for (NamedModel& model : models) {
    TDataSeries series;  // shares the points
    series.SetState(data);
    series.Fit().SetSettings(model.settings, MarkModified::Yes);
    jobs.push_back(PrepareFit(series, options));
    std::string no_guess;
    if (model.start == ModelStart::Guessed) {
      no_guess = TakeGuess(jobs.back());
      series.Fit().SetSettings(jobs.back().settings, MarkModified::Yes);
    }
    compared.results.push_back(RunFit(jobs.back(), progress));
    if (progress.Cancelled()) return std::nullopt;
    if (!no_guess.empty()) compared.results.back().verdict.notes.push_back(std::move(no_guess));
    ApplyFit(series, compared.results.back());
    model.settings = series.Fit().Settings();
  }
  compared.models = std::move(models);
  compared.comparison = CompareFits(jobs, compared.results);
  return compared;
}

std::vector<std::vector<std::string>> ComparisonRows(const ModelComparison& compared) {
  std::vector<std::vector<std::string>> rows = {
      {"function", "parameters", "AICc", "difference", "weight", "rss", "verdict"}};
  for (const RankedModel& one : compared.comparison.ranks) {
    const FitResult& result = compared.results[one.number];
    rows.push_back({compared.models[one.number].name, std::to_string(result.names.size()),
                    Figure(result, result.statistics.aicc), Figure(result, one.difference),
                    Figure(result, one.weight), Figure(result, result.statistics.sum_of_squares),
                    result.verdict.summary});
  }
  return rows;
}

std::vector<std::string> ComparisonRemarks(const ModelComparison& compared) {
  std::vector<std::string> remarks = {
      "AICc weighs the sum of squares against the number of parameters: the least is best, a "
      "difference above 10 speaks clearly."};
  for (const NestedTest& test : compared.comparison.tests)
    remarks.push_back(TextOf(test, compared));
  for (std::size_t i = 0; i < compared.models.size(); ++i) {
    for (const std::string& note : compared.results[i].verdict.notes)
      remarks.push_back(compared.models[i].name + ": " + note);
  }
  return remarks;
}

std::string ComparisonAsTable(const ModelComparison& compared) {
  std::string text;
  for (const std::vector<std::string>& row : ComparisonRows(compared)) {
    for (std::size_t i = 0; i < row.size(); ++i) text += (i == 0 ? "" : "\t") + row[i];
    text += '\n';
  }
  for (const std::string& remark : ComparisonRemarks(compared)) text += '\n' + remark;
  return text + '\n';
}

}  // namespace tarnwick
