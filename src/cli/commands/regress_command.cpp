#include <memory>
#include <optional>

#include "analysis/settled_regression.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/number_check.h"
#include "cli/options/save_output.h"
#include "cli/output/point_text.h"
#include "data/regression/regression_figures.h"

namespace tarnwick::cli {
namespace {

struct RegressOptions {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  int type = 0;
  std::optional<int> steps;
  std::optional<double> alpha;
};

void RunRegress(const RegressOptions& options, Output& output) {
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  const std::size_t index = ChooseToldSeries(*input.graph, options.dataset, output);
  TSeries& series = input.graph->Series(index);
  if (options.steps) series.SetRegressionSteps(*options.steps);
  if (options.alpha) series.SetRegressionAlpha(*options.alpha);
  series.SetRegressionType(static_cast<tarnwick::RegressionType>(options.type));
  SettleRegression(series);
  if (const auto figures = FiguresOf(series.Points(), series.RegressionType()))
    output.Note(FiguresText(*figures));
  if (options.save.Wanted()) {
    SaveOutput(*input.graph, index, options.save, output);
    PrintSaved(options.save, output);
    return;
  }
  PrintRegression(series, output);
}

}  // namespace

void DeclareRegress(Command& command, Action& action) {
  auto options = std::make_shared<RegressOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command
      .Add("--type", options->type,
           "0 none, 1 parabola, 2 robust line, 3 line, 4 spline, 5 smoother, "
           "6 exponential smoothing, 7 running average")
      .Required()
      .Between(0, 7);
  command.Add("--steps", options->steps, "Steps of the curve (types 4, 5)");
  command.Add("--alpha", options->alpha, "Smoothing factor (6), 1/window (7), end slope (4)")
      .Check(kFiniteNumber);
  AddSave(command, options->save);
  OnCommand(command, action, options, &RunRegress);
}

}  // namespace tarnwick::cli
