#include <memory>
#include <string>
#include <vector>

#include "cli/commands/commands.h"
#include "cli/options/function_input.h"
#include "cli/options/input_graph.h"
#include "expr/message_with_place.h"
#include "fit/model/curve_fit.h"
#include "fit/model/fit_function_file.h"
#include "fit/model/model_report.h"

namespace tarnwick::cli {
namespace {

struct ReportOptions {
  InputArguments input;
  std::string dataset;
  bool settings = false;
};

FitSettings ReadModel(const ReportOptions& options, Output& output) {
  if (IsFitFunctionFile(options.input.file)) return LoadFitFunction(options.input.file);
  const InputGraph input = ReadInput(options.input, output);
  return input.graph->Series(ChooseToldSeries(*input.graph, options.dataset, output))
      .Fit()
      .Settings();
}

/// The report shows the compiled text; the settings text needs none.
std::vector<std::string> Lines(const ReportOptions& options, Output& output) {
  TCurFit fit;
  fit.SetSettings(ReadModel(options, output), MarkModified::No);
  if (options.settings) return SettingsText(fit);
  try {
    fit.Prepare();
  } catch (const EParserException& error) {
    throw Error(MessageWithPlace(error, fit.CurrentText()));
  }
  return Report(fit);
}

void RunReport(const ReportOptions& options, Output& output) {
  const std::vector<std::string> lines = Lines(options, output);
  if (output.IsJson()) {
    output.Document({{"lines", lines}});
    return;
  }
  for (const std::string& line : lines) output.Text() << line << '\n';
}

}  // namespace

void DeclareReport(Command& command, Action& action) {
  auto options = std::make_shared<ReportOptions>();
  AddInput(command, options->input);
  AddDataset(command, options->dataset);
  command.AddFlag("--settings", options->settings, "The short settings text");
  OnCommand(command, action, options, &RunReport);
}

}  // namespace tarnwick::cli
