#include "cli/commands/fit_several.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

#include "analysis/fits/fit_run.h"
#include "analysis/fits/start_values.h"
#include "base/error.h"
#include "cli/commands/fit_text.h"
#include "cli/options/command.h"
#include "cli/output/headless_gui.h"
#include "cli/output/terminal_progress.h"
#include "expr/message_with_place.h"
#include "expr/words/parser_exception.h"
#include "fit/model/typed_model.h"
#include "graph/series.h"
#include "graph/xy_graph.h"
#include "results/fit_colours.h"
#include "results/fit_leftovers.h"
#include "results/fit_print.h"
#include "results/fit_series.h"
#include "results/fitted_model.h"
#include "results/joint_fit.h"

namespace tarnwick::cli {
namespace {

/// The DataSets named, each once.
std::vector<std::size_t> ChooseAll(const FitOptions& options, TxyGraph& graph) {
  std::vector<std::size_t> chosen;
  std::set<std::size_t> seen;
  for (const std::string& name : options.datasets) {
    const std::size_t index = ChooseSeries(graph, name);
    if (!seen.insert(index).second) throw UsageError("--dataset " + name + " stands twice");
    chosen.push_back(index);
  }
  return chosen;
}

std::vector<std::string> NamesMadeParameters(FitSettings& model) {
  try {
    return MakeParameters(model);
  } catch (const EParserException& error) {
    RefuseExpression(error, model);
  }
}

}  // namespace

void RefuseExpression(const EParserException& error, const FitSettings& model) {
  // Where templates stand in for names, the place is one of a text that nobody wrote.
  if (!model.templates.empty()) throw;
  throw Error(MessageWithPlace(error, model.Expression));
}

std::vector<std::string> GiveModel(const FitOptions& options, TSeries& series, Output& output) {
  FitSettings model = ChooseModel(options.model, series.Fit().Settings(), series.Points().Size());
  const std::vector<std::string> x = {WordOf(series.Source().XDataColumn)};
  if (!options.model.expression.empty() && ChooseVariable(model, x))
    output.Note(TakenAsVariable(model.XVarName));
  std::vector<std::string> made;
  if (options.guess) made = NamesMadeParameters(model);
  if (options.model.functions.empty()) {
    series.Fit().SetSettings(model, MarkModified::Yes);
  } else {
    TakeFitFunction(series, model);
  }
  return made;
}

FitRunOptions RunOptionsOf(const FitOptions& options) {
  FitRunOptions run;
  run.points = options.all_points ? FitPointChoice::All : FitPointChoice::Thinned;
  run.finish = options.finish ? FinishingStep::Yes : FinishingStep::No;
  return run;
}

void AddToGraph(const FitOptions& options, TSeries& series, TxyGraph& graph) {
  ColourFitsByDataSet(graph);
  RenewLeftovers(graph, series);
  if (!options.residuals.empty()) {
    const bool named = options.residuals != kNamedAfterSource;
    AddResiduals(graph, series, named ? options.residuals : ResidualsName(series));
  }
  if (options.band_curves) AddBands(graph, series, options.level);
  if (!options.print) return;
  const HeadlessGui gui;
  PrintFitOnGraph(graph, series);
}

void RunJoint(const FitOptions& options, const InputGraph& input, Output& output) {
  TxyGraph& graph = *input.graph;
  const std::vector<std::size_t> chosen = ChooseAll(options, graph);
  if (!options.residuals.empty() && options.residuals != kNamedAfterSource)
    throw UsageError("--residuals takes no name for several DataSets");
  std::vector<std::string> made;
  for (const std::size_t index : chosen) {
    for (std::string& name : GiveModel(options, graph.Series(index), output))
      if (std::ranges::find(made, name) == made.end()) made.push_back(std::move(name));
  }
  std::vector<FitJob> jobs = PrepareJointFit(graph, chosen, RunOptionsOf(options));
  if (options.guess) GuessJointStart(jobs, options.shared);
  TerminalProgress progress;
  JointFit fit = RunJointFit(jobs, options.shared, progress);
  if (Failed(fit.whole.outcome.why)) throw Error(fit.whole.verdict.summary);
  if (!made.empty()) {
    // The graph keeps what is told of its first DataSet.
    for (FitResult* const told : {&fit.whole, &fit.parts.front()})
      told->verdict.notes.push_back(TakenAsParameters(made));
  }
  ApplyJointFit(graph, chosen, options.shared, fit);
  JointAnswer answer;
  for (std::size_t i = 0; i < chosen.size(); ++i) {
    const TSeries& series = graph.Series(chosen[i]);
    answer.parts.push_back(
        {jobs[i].data_set,
         {series.Fit().Settings(), std::move(fit.parts[i]), options.level, {}, {}}});
  }
  answer.whole = std::move(fit.whole);
  answer.shared = options.shared;
  if (options.save.Wanted()) {
    // By name: what is added may stand between the DataSets.
    for (const JointAnswer::Part& part : answer.parts)
      AddToGraph(options, graph.Series(ChooseSeries(graph, part.data_set)), graph);
    SaveOutput(graph, chosen.front(), options.save, output);
  }
  if (options.save.file != "-") PrintJointFit(answer, output);
}

void RunComparison(const FitOptions& options, const TSeries& series, Output& output) {
  std::vector<NamedModel> models;
  for (const std::string& function : options.model.functions) {
    FitModelArguments one = options.model;
    one.functions = {function};
    models.push_back({FunctionName(function),
                      ChooseModel(one, series.Fit().Settings(), series.Points().Size()),
                      options.guess ? ModelStart::Guessed : ModelStart::AsGiven});
  }
  TerminalProgress progress;
  const std::optional<ModelComparison> compared =
      CompareModels(series.State(), std::move(models), RunOptionsOf(options), progress);
  if (!compared) throw Error("the comparison was ended before its last fit");
  PrintComparison(*compared, output);
}

}  // namespace tarnwick::cli
