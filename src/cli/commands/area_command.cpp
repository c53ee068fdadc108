#include <memory>

#include "analysis/derived.h"
#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "results/area_figure.h"

namespace tarnwick::cli {
namespace {

struct AreaOptions {
  InputArguments input;
  std::string dataset;
};

void RunArea(const AreaOptions& options, Output& output) {
  const InputGraph input = ReadInput(options.input, output);
  const AreaFigure figure =
      FindArea(input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output)));
  output.Note(figure.told);
  if (output.IsJson()) {
    output.Document({{"area", JsonNumber(figure.area)}});
  } else {
    output.Text() << ShortestText(figure.area) << '\n';
  }
}

void RunTotal(const AreaOptions& options, Output& output) {
  const InputGraph input = ReadInput(options.input, output);
  const TSeries& series =
      input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output));
  const double sum = SumOf(series);
  if (output.IsJson()) {
    output.Document({{"points", series.PointCount()}, {"sum", JsonNumber(sum)}});
  } else {
    output.Text() << series.PointCount() << " points, sum " << ShortestText(sum) << '\n';
  }
}

void Declare(Command& command, Action& action, void (*run)(const AreaOptions&, Output&)) {
  auto options = std::make_shared<AreaOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  OnCommand(command, action, options, run);
}

}  // namespace

void DeclareArea(Command& command, Action& action) {
  Declare(command, action, &RunArea);
}
void DeclareTotal(Command& command, Action& action) {
  Declare(command, action, &RunTotal);
}

}  // namespace tarnwick::cli
