// The command compare: two DataSets beside each other, with tests.
#include <memory>

#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "graph/xy_graph.h"
#include "results/sample_report.h"

namespace tarnwick::cli {
namespace {

struct CompareOptions {
  InputArguments input;
  std::string dataset;
  std::string with;
};

Json FiguresJson(const SampleFigures& figures) {
  return {{"count", figures.count},
          {"mean", JsonNumber(figures.mean)},
          {"deviation", JsonNumber(figures.deviation)},
          {"least", JsonNumber(figures.least)},
          {"lower_quartile", JsonNumber(figures.lower_quartile)},
          {"median", JsonNumber(figures.median)},
          {"upper_quartile", JsonNumber(figures.upper_quartile)},
          {"greatest", JsonNumber(figures.greatest)}};
}

Json Document(const SampleComparison& c) {
  return {{"first", FiguresJson(c.first)},
          {"second", FiguresJson(c.second)},
          {"difference", JsonNumber(c.difference)},
          {"difference_error", JsonNumber(c.difference_error)},
          {"t", JsonNumber(c.t)},
          {"t_freedom", JsonNumber(c.t_freedom)},
          {"t_probability", JsonNumber(c.t_probability)},
          {"f", JsonNumber(c.f)},
          {"f_probability", JsonNumber(c.f_probability)},
          {"distance", JsonNumber(c.distance)},
          {"distance_probability", JsonNumber(c.distance_probability)}};
}

void RunCompare(const CompareOptions& options, Output& output) {
  const InputGraph input = ReadInput(options.input, output);
  TxyGraph& graph = *input.graph;
  const TSeries& first = graph.Series(ChooseToldSeries(graph, options.dataset, output));
  const TSeries& second = graph.Series(ChooseSeries(graph, options.with));
  const SampleReport report = CompareSeries(first, second);
  if (output.IsJson()) {
    output.Document(Document(report.comparison));
    return;
  }
  for (const SampleRow& row : report.rows)
    output.Text() << row.name << ": " << ShortestText(row.first) << ", " << ShortestText(row.second)
                  << '\n';
  for (const std::string& sentence : report.sentences) output.Text() << sentence << '\n';
}

}  // namespace

void DeclareCompare(Command& command, Action& action) {
  auto options = std::make_shared<CompareOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.Add("--with", options->with, "The DataSet that it is compared with, by name or number")
      .Required();
  OnCommand(command, action, options, &RunCompare);
}

}  // namespace tarnwick::cli
