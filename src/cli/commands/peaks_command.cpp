#include <memory>

#include "base/number_text.h"
#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "results/peak_marks.h"

namespace tarnwick::cli {
namespace {

struct Options {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
  PeakOptions search;
};

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

void Run(const Options& options, Output& output) {
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  TxyGraph& graph = *input.graph;
  const std::size_t index = ChooseSeries(graph, options.dataset);
  graph.UpdateScales();
  const std::vector<Peak> peaks = PeaksOn(graph, graph.Series(index), options.search);
  if (options.save.Wanted()) {
    MarkPeaks(graph, peaks, options.search.captions);
    SaveOutput(graph, index, options.save, output);
  }
  if (options.save.file != "-") Print(peaks, options.search.captions, output);
}

}  // namespace

void DeclarePeaks(Command& command, Action& action) {
  auto options = std::make_shared<Options>();
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
  AddSave(command, options->save);
  OnCommand(command, action, options, &Run);
}

}  // namespace tarnwick::cli
