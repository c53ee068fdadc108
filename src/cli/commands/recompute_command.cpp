// The command recompute: what was computed from DataSets of a graph, computed anew.
#include <algorithm>
#include <memory>

#include "base/error.h"
#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "graph/xy_graph.h"
#include "results/made_series.h"

namespace tarnwick::cli {
namespace {

struct RecomputeOptions {
  InputArguments input;
  SaveArguments save;
};

void RunRecompute(const RecomputeOptions& options, Output& output) {
  CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TxyGraph& graph = *input.graph;
  if (!HasMadeSeries(graph)) throw Error("No DataSet of the graph was computed from others.");
  const Recomputed made = RecomputeAll(graph);
  output.Note(Counted(static_cast<std::int64_t>(made.count), "DataSet") + " computed anew.");
  output.Note(made.told);
  const auto current = static_cast<std::size_t>(std::max(graph.CurrentSeriesIndex(), 0));
  SaveOutput(graph, current, options.save, output);
  PrintSaved(options.save, output);
}

}  // namespace

void DeclareRecompute(Command& command, Action& action) {
  auto options = std::make_shared<RecomputeOptions>();
  AddInput(command, options->input);
  AddSave(command, options->save);
  command.Find("-o").Required();
  OnCommand(command, action, options, &RunRecompute);
}

}  // namespace tarnwick::cli
