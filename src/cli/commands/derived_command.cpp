#include <memory>

#include "cli/commands/commands.h"
#include "cli/options/made_series.h"
#include "cli/options/number_check.h"
#include "results/derived_series.h"

namespace tarnwick::cli {
namespace {

struct Options {
  MadeSeriesArguments made;
  std::string dataset;
  int bins = 100;
  bool hide_source = false;
};

template <DerivedKind kKind>
void Run(const Options& options, Output& output) {
  RunMadeSeries(options.made, output, [&](TxyGraph& graph) -> const TSeries& {
    TSeries& source = graph.Series(ChooseSeries(graph, options.dataset));
    const MadeSeries made =
        AddDerived(graph, source, kKind,
                   {.name = options.made.name,
                    .y_axis = options.made.Axis(),
                    .source = options.hide_source ? SourceAfter::Hidden : SourceAfter::Shown,
                    .bins = options.bins});
    output.Note(made.told);
    output.Note(LiveSourceText(source));
    return made.series;
  });
}

std::shared_ptr<Options> Declare(Command& command, Action& action,
                                 void (*run)(const Options&, Output&)) {
  auto options = std::make_shared<Options>();
  AddMadeSeries(command, options->made);
  AddDataset(command, options->dataset);
  command.AddFlag("--hide-source", options->hide_source,
                  "The DataSet it is computed from is no longer drawn");
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
