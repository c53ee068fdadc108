#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "analysis/settled_regression.h"
#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/number_check.h"
#include "results/evaluation.h"

namespace tarnwick::cli {
namespace {

struct EvaluateOptions {
  InputArguments input;
  std::string dataset;
  std::vector<double> at;
  std::vector<double> where_y;
};

/// In the order asked.
std::vector<Evaluated> ValuesAsked(const EvaluateOptions& options, const TSeries& series,
                                   Output& output) {
  std::vector<Evaluated> all;
  const auto take = [&](const std::vector<Evaluated>& found, const char* of, double asked) {
    all.insert(all.end(), found.begin(), found.end());
    if (found.empty())
      output.Note("DataSet \"" + series.SeriesName() + "\" has no value at " + of + " = " +
                  ShortestText(asked) + ".");
  };
  for (const double x : options.at) {
    const std::vector<Evaluated> found = EvaluateAt(series, x);
    take(found, "X", x);
    output.Note(PassesText(series, x, found));
  }
  for (const double y : options.where_y) take(FindXWhere(series, y), "Y", y);
  return all;
}

void RunEvaluate(const EvaluateOptions& options, Output& output) {
  if (options.at.empty() && options.where_y.empty())
    throw UsageError("evaluate needs --at X or --where-y Y");
  const InputGraph input = ReadInput(options.input, output);
  TSeries& series = input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output));
  SettleRegression(series);
  const std::vector<Evaluated> found = ValuesAsked(options, series, output);
  if (output.IsJson()) {
    Json values = Json::Array();
    for (const Evaluated& one : found)
      values.Append({{"by", one.by},
                     {"x", JsonNumber(one.x)},
                     {"y", JsonNumber(one.y)},
                     {"error", JsonNumber(one.error)}});
    output.Document({{"values", std::move(values)}});
    return;
  }
  output.Text() << "by,x,y,error\n";
  for (const Evaluated& one : found)
    output.Text() << one.by << ',' << ShortestText(one.x) << ',' << ShortestText(one.y) << ','
                  << ShortestText(one.error) << '\n';
}

}  // namespace

void DeclareEvaluate(Command& command, Action& action) {
  auto options = std::make_shared<EvaluateOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command
      .Add("--at", options->at,
           "X at which points, regression and model have the values told; repeat")
      .Repeated()
      .OneValueEach()
      .ValueName("X")
      .Check(kFiniteNumber);
  command.Add("--where-y", options->where_y, "Y whose X are told; repeat")
      .Repeated()
      .OneValueEach()
      .ValueName("Y")
      .Check(kFiniteNumber);
  OnCommand(command, action, options, &RunEvaluate);
}

}  // namespace tarnwick::cli
