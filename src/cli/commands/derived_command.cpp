#include <memory>
#include <utility>

#include "analysis/derived.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/number_check.h"
#include "cli/options/save_output.h"
#include "cli/output/point_text.h"

namespace tarnwick::cli {
namespace {

struct Options {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  std::string name;
  std::string axis = "second";
  int bins = 100;
};

/// Fills `target` from `source`.
using Derive = void (*)(TDataSeries& source, TDataSeries& target, const Options& options);

struct Kind {
  const char* suffix;
  Derive derive;
};

constexpr Kind kIntegral = {"_INT", [](TDataSeries& source, TDataSeries& target, const Options&) {
                              Integral(source, target);
                            }};
constexpr Kind kRunningSum = {"_SUM", [](TDataSeries& source, TDataSeries& target, const Options&) {
                                RunningSum(source, target);
                              }};
constexpr Kind kHistogram = {"_HIS",
                             [](TDataSeries& source, TDataSeries& target, const Options& options) {
                               ProbabilityDensity(source, target, options.bins);
                             }};
constexpr Kind kDerivative = {"_DIF", [](TDataSeries& source, TDataSeries& target, const Options&) {
                                Derivative(source, target);
                              }};

bool NameTaken(const TxyGraph& graph, const std::string& name) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    if (graph.Series(i).SeriesName() == name) return true;
  }
  return false;
}

/// The source's name and the suffix, with "_" and a number where that is taken.
std::string FreeName(const TxyGraph& graph, const std::string& wanted) {
  std::string name = wanted;
  for (int number = 1; NameTaken(graph, name); ++number)
    name = wanted + "_" + std::to_string(number);
  return name;
}

template <const Kind& kKind>
void Run(const Options& options, Output& output) {
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input);
  TSeries& source = input.graph->Series(ChooseSeries(*input.graph, options.dataset));
  auto target = std::make_unique<TSeries>();
  target->SetSeriesName(options.name.empty()
                            ? FreeName(*input.graph, source.SeriesName() + kKind.suffix)
                            : options.name);
  kKind.derive(source, *target, options);
  if (!options.save.Wanted()) {
    PrintPoints(*target, output);
    return;
  }
  TSeries& added = input.graph->AddSeries(std::move(target));
  SeriesStyle style = added.Style();
  style.first_axis = options.axis == "main";
  added.SetStyle(style);
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
  AddSave(command, options->save);
  OnCommand(command, action, options, run);
  return options;
}

}  // namespace

void DeclareIntegrate(Command& command, Action& action) {
  Declare(command, action, &Run<kIntegral>);
}
void DeclareSum(Command& command, Action& action) {
  Declare(command, action, &Run<kRunningSum>);
}
void DeclareDifferentiate(Command& command, Action& action) {
  Declare(command, action, &Run<kDerivative>);
}

void DeclareHistogram(Command& command, Action& action) {
  const std::shared_ptr<Options> options = Declare(command, action, &Run<kHistogram>);
  command.Add("--bins", options->bins, "Number of bins").Check(kPositiveNumber);
}

}  // namespace tarnwick::cli
