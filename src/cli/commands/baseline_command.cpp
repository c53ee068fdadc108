// The commands baseline and shift: what marks and numbers do to the data of a graph.
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick::cli {
namespace {

struct BaselineOptions {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  std::optional<double> offset;
  std::optional<double> slope;
  std::optional<int> mark;
};

struct ShiftOptions {
  InputArguments input;
  SaveArguments save;
  std::optional<double> by;
  std::optional<int> mark;
};

void CheckFinite(const std::optional<double>& number, const char* option) {
  if (number && !std::isfinite(*number)) throw UsageError(std::string(option) + " needs a number");
}

void RunBaseline(const BaselineOptions& options, Output& output) {
  const bool numbers = options.offset || options.slope;
  if (numbers == options.mark.has_value()) {
    throw UsageError("baseline needs either --offset and --slope, or --mark");
  }
  CheckFinite(options.offset, "--offset");
  CheckFinite(options.slope, "--slope");
  CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TxyGraph& graph = *input.graph;
  const std::size_t index = ChooseToldSeries(graph, options.dataset, output);
  if (options.mark) {
    SetBaseLine(graph.Series(index), graph.Marks().FindMark(*options.mark));
  } else {
    SetBaseLine(graph.Series(index),
                BaseLine{options.offset.value_or(0), options.slope.value_or(0)});
  }
  SaveOutput(graph, index, options.save, output);
  PrintSaved(options.save, output);
}

void RunShift(const ShiftOptions& options, Output& output) {
  if (options.by.has_value() == options.mark.has_value()) {
    throw UsageError("shift needs either --by or --mark");
  }
  CheckFinite(options.by, "--by");
  CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TxyGraph& graph = *input.graph;
  if (options.mark) {
    MoveXOrigin(graph, graph.Marks().FindMark(*options.mark));
  } else {
    ShiftGraphX(graph, *options.by);
  }
  const auto current = static_cast<std::size_t>(std::max(graph.CurrentSeriesIndex(), 0));
  SaveOutput(graph, current, options.save, output);
  PrintSaved(options.save, output);
}

void AddWantedSave(Command& command, SaveArguments& arguments) {
  AddSave(command, arguments);
  command.Find("-o").Required();
}

}  // namespace

void DeclareBaseline(Command& command, Action& action) {
  auto options = std::make_shared<BaselineOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.Add("--offset", options->offset, "Value of the base line at X = 0");
  command.Add("--slope", options->slope, "Slope of the base line");
  command.Add("--mark", options->mark, "ID of a horizontal or line mark to take it from");
  AddWantedSave(command, options->save);
  OnCommand(command, action, options, &RunBaseline);
}

void DeclareShift(Command& command, Action& action) {
  auto options = std::make_shared<ShiftOptions>();
  AddInput(command, options->input);
  command.Add("--by", options->by, "Added to every X, of DataSets and marks");
  command.Add("--mark", options->mark, "ID of a vertical mark that shall stand at X = 0");
  AddWantedSave(command, options->save);
  OnCommand(command, action, options, &RunShift);
}

}  // namespace tarnwick::cli
