#include <memory>

#include "analysis/settled_regression.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/output/point_text.h"

namespace tarnwick::cli {
namespace {

struct PointsOptions {
  InputArguments input;
  std::string dataset;
  bool curve = false;
};

void RunPoints(const PointsOptions& options, Output& output) {
  const InputGraph input = ReadInput(options.input, output);
  TSeries& series = input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output));
  SettleRegression(series);
  options.curve ? PrintCurve(series, output) : PrintPoints(series, output);
}

}  // namespace

void DeclarePoints(Command& command, Action& action) {
  auto options = std::make_shared<PointsOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.AddFlag("--curve", options->curve, "The regression curve instead of the points");
  OnCommand(command, action, options, &RunPoints);
}

}  // namespace tarnwick::cli
