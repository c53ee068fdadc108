#include <memory>

#include "cli/commands/commands.h"
#include "cli/options/made_series.h"
#include "cli/options/number_check.h"
#include "results/derived_series.h"

namespace tarnwick::cli {
namespace {

struct DerivedOptions {
  MadeSeriesArguments made;
  std::string dataset;
  int bins = 100;
};

template <DerivedKind kKind>
void RunDerived(const DerivedOptions& options, Output& output) {
  RunMadeSeries(options.made, output, [&](TxyGraph& graph) -> const TSeries& {
    TSeries& source = graph.Series(ChooseToldSeries(graph, options.dataset, output));
    const bool hides = HidesSource(kKind) && !options.made.show_source;
    const MadeSeries made = AddDerived(graph, source, kKind,
                                       {.name = options.made.name,
                                        .y_axis = options.made.Axis(),
                                        .source = hides ? SourceAfter::Hidden : SourceAfter::Shown,
                                        .bins = options.bins});
    output.Note(made.told);
    if (hides) TellHidden(options.made, source, output);
    output.Note(LiveSourceText(source));
    return made.series;
  });
}

template <DerivedKind kKind>
std::shared_ptr<DerivedOptions> Declare(Command& command, Action& action) {
  auto options = std::make_shared<DerivedOptions>();
  AddMadeSeries(command, options->made);
  AddDataset(command, options->dataset);
  if (HidesSource(kKind)) AddShowSource(command, options->made, "beside what is made of it");
  OnCommand(command, action, options, &RunDerived<kKind>);
  return options;
}

}  // namespace

void DeclareIntegrate(Command& command, Action& action) {
  Declare<DerivedKind::Integral>(command, action);
}
void DeclareSum(Command& command, Action& action) {
  Declare<DerivedKind::RunningSum>(command, action);
}
void DeclareDifferentiate(Command& command, Action& action) {
  Declare<DerivedKind::Derivative>(command, action);
}

void DeclareHistogram(Command& command, Action& action) {
  const std::shared_ptr<DerivedOptions> options = Declare<DerivedKind::Histogram>(command, action);
  command.Add("--bins", options->bins, "Number of bins").Check(kPositiveNumber);
}

}  // namespace tarnwick::cli
