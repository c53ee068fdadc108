#include <memory>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/options/made_series.h"
#include "graph/xy_graph.h"
#include "results/average_series.h"

namespace tarnwick::cli {
namespace {

struct AverageOptions {
  MadeSeriesArguments made;
  std::string reference;
  std::vector<std::string> of;
};

void RunAverage(const AverageOptions& options, Output& output) {
  RunMadeSeries(options.made, output, [&](TxyGraph& graph) -> const TSeries& {
    TSeries& reference = graph.Series(ChooseSeries(graph, options.reference));
    std::vector<std::size_t> averaged;
    for (const std::string& name : options.of) averaged.push_back(ChooseSeries(graph, name));
    const MadeSeries made =
        AddAverage(graph, reference, averaged, options.made.Wanted(AverageName(graph, reference)));
    output.Note(made.told);
    return made.series;
  });
}

}  // namespace

void DeclareAverage(Command& command, Action& action) {
  auto options = std::make_shared<AverageOptions>();
  options->made.axis = "main";
  AddMadeSeries(command, options->made);
  command.Add("--reference", options->reference, "DataSet that gives the X, by name or number")
      .Required();
  command.Add("--of", options->of, "DataSet that is averaged, by name or number")
      .OneValueEach()
      .Repeated()
      .Required();
  OnCommand(command, action, options, &RunAverage);
}

}  // namespace tarnwick::cli
