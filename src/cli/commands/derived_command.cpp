#include <memory>

#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/number_check.h"
#include "cli/options/save_output.h"
#include "cli/output/point_text.h"
#include "results/derived_series.h"

namespace tarnwick::cli {
namespace {

struct Options {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  std::string name;
  std::string axis = "second";
  int bins = 100;
  bool hide_source = false;
};

template <DerivedKind kKind>
void Run(const Options& options, Output& output) {
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TSeries& source = input.graph->Series(ChooseSeries(*input.graph, options.dataset));
  DerivedOptions derived;
  derived.name = options.name;
  derived.y_axis = options.axis == "main" ? AxisId::Y : AxisId::Y2;
  derived.source = options.hide_source ? SourceAfter::Hidden : SourceAfter::Shown;
  derived.bins = options.bins;
  const TSeries& added = AddDerived(*input.graph, source, kKind, derived);
  output.Note(DerivedErrorsText(source, kKind, added));
  output.Note(LiveSourceText(source));
  if (!options.save.Wanted()) {
    PrintPoints(added, output);
    return;
  }
  SaveOutput(*input.graph, input.graph->SeriesCount() - 1, options.save, output);
  PrintSaved(options.save, output);
}

std::shared_ptr<Options> Declare(Command& command, Action& action,
                                 void (*run)(const Options&, Output&)) {
  auto options = std::make_shared<Options>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.Add("--name", options->name, "Name of the new DataSet");
  command.Add("--axis", options->axis, "Y axis of the new DataSet: main or second")
      .OneOf({"main", "second"});
  command.AddFlag("--hide-source", options->hide_source,
                  "The DataSet it is computed from is no longer drawn");
  AddSave(command, options->save);
  OnCommand(command, action, options, run);
  return options;
}

}  // namespace

void DeclareIntegrate(Command& command, Action& action) {
  Declare(command, action, &Run<DerivedKind::Integral>);
}
void DeclareSum(Command& command, Action& action) {
  Declare(command, action, &Run<DerivedKind::RunningSum>);
}
void DeclareDifferentiate(Command& command, Action& action) {
  Declare(command, action, &Run<DerivedKind::Derivative>);
}

void DeclareHistogram(Command& command, Action& action) {
  const std::shared_ptr<Options> options = Declare(command, action, &Run<DerivedKind::Histogram>);
  command.Add("--bins", options->bins, "Number of bins").Check(kPositiveNumber);
}

}  // namespace tarnwick::cli
