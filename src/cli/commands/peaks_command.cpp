#include <memory>

#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "results/peak_table.h"
#include "results/peak_table_text.h"

namespace tarnwick::cli {
namespace {

struct PeaksOptions {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  PeakOptions search;
  std::optional<double> prominence;
};

void PrintTable(const std::vector<PeakFigures>& peaks, Output& output) {
  if (!output.IsJson()) {
    output.Text() << PeakTableText(peaks, ',');
    return;
  }
  Json list = Json::Array();
  for (const PeakFigures& peak : peaks) {
    Json figures = Json::Object();
    for (const PeakColumn& column : PeakColumns())
      figures[column.name] = JsonNumber(peak.*column.figure);
    list.Append(std::move(figures));
  }
  output.Document({{"peaks", std::move(list)}});
}

void PrintByProminence(const PeaksOptions& options, TxyGraph& graph, TSeries& series,
                       Output& output) {
  const PeakTable table = MakePeakTable(
      graph, series,
      {.rule = PeakRule::Prominence, .times_noise = *options.prominence, .search = options.search});
  output.Note(table.told);
  PrintTable(table.peaks, output);
}

void Print(const std::vector<Peak>& peaks, const PeakCaptions& captions, Output& output) {
  if (output.IsJson()) {
    Json list = Json::Array();
    for (const Peak& peak : peaks) {
      list.Append({{"x", JsonNumber(peak.x)},
                   {"y", JsonNumber(peak.y)},
                   {"caption", PeakCaption(peak.x, captions)}});
    }
    output.Document({{"peaks", std::move(list)}});
    return;
  }
  output.Text() << "x,y,caption\n";
  for (const Peak& peak : peaks) {
    output.Text() << ShortestText(peak.x) << ',' << ShortestText(peak.y) << ','
                  << PeakCaption(peak.x, captions) << '\n';
  }
}

void RunPeaks(const PeaksOptions& options, Output& output) {
  if (options.prominence && options.save.Wanted())
    throw UsageError("--prominence prints a table; -o saves the marks of the other rule");
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TxyGraph& graph = *input.graph;
  const std::size_t index = ChooseToldSeries(graph, options.dataset, output);
  graph.UpdateScales();
  if (options.prominence) return PrintByProminence(options, graph, graph.Series(index), output);
  const std::vector<Peak> peaks = PeaksOn(graph, graph.Series(index), options.search);
  if (options.save.Wanted()) {
    MarkPeaks(graph, peaks, options.search.captions);
    SaveOutput(graph, index, options.save, output);
  }
  if (options.save.file != "-") Print(peaks, options.search.captions, output);
}

}  // namespace

void DeclarePeaks(Command& command, Action& action) {
  auto options = std::make_shared<PeaksOptions>();
  PeakOptions& search = options->search;
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.Add("--left", search.left, "Look from this X on").Check(kFiniteNumber);
  command.Add("--right", search.right, "Look up to this X").Check(kFiniteNumber);
  command
      .Add("--noise", search.noise_percent,
           "Rise above both neighbours that a peak exceeds, in percent of the Y axis")
      .Check(kFiniteNumber);
  command.Add("--digits", search.captions.digits, "Least digits of an exponent in captions")
      .Between(0, 4);
  command.Add("--precision", search.captions.precision, "Significant digits in captions")
      .Between(1, 17);
  command
      .Add("--prominence", options->prominence,
           "Measure the peaks that rise so many times the noise above the valleys beside them")
      .Check(kNonNegativeNumber);
  AddSave(command, options->save);
  OnCommand(command, action, options, &RunPeaks);
}

}  // namespace tarnwick::cli
