#include <memory>

#include "base/error.h"
#include "cli/commands/commands.h"
#include "cli/options/command.h"
#include "cli/options/function_input.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "fit/model/curve_fit_file.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick::cli {
namespace {

struct ConvertOptions {
  InputArguments input;
  SaveArguments save;
  std::string dataset;
};

void ConvertFunction(const ConvertOptions& options, Output& output) {
  const WriterMode mode = options.save.Mode();
  const FitSettings settings = LoadFitFunction(options.input.file);
  if (options.save.file == "-" && mode == WriterMode::Text) {
    if (output.IsJson()) throw UsageError("standard output cannot hold the data and a document");
    output.Text() << StoredModel(settings, mode);
    return;
  }
  if (!IsFitFunctionFile(options.save.file)) {
    throw Error("a fitting function is no graph; it converts to .tfn only: " + options.save.file);
  }
  CheckOverwrite(options.save);
  SaveFitFunction(options.save.file, settings, mode);
  PrintSaved(options.save, output);
}

void RunConvert(const ConvertOptions& options, Output& output) {
  if (IsFitFunctionFile(options.input.file)) return ConvertFunction(options, output);
  CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  const std::size_t index =
      input.graph->SeriesCount() == 0 ? 0 : ChooseSeries(*input.graph, options.dataset);
  SaveOutput(*input.graph, index, options.save, output);
  PrintSaved(options.save, output);
}

}  // namespace

void DeclareConvert(Command& command, Action& action) {
  auto options = std::make_shared<ConvertOptions>();
  AddInput(command, options->input);
  command.Add("OUT", options->save.file, "The new file, its kind by extension").Required();
  command.AddFlag("--overwrite", options->save.overwrite, "Replace the file if it exists");
  command.AddFlag("--text-mode", options->save.text_mode,
                  "Write graph and function files with readable keys and values; to - too");
  AddDataset(command, options->dataset);
  OnCommand(command, action, options, &RunConvert);
}

}  // namespace tarnwick::cli
