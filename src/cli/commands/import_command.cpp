#include <memory>

#include "base/error.h"
#include "cli/commands/commands.h"
#include "cli/commands/info_json.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"

namespace tarnwick::cli {
namespace {

struct Options {
  InputArguments input;
  SaveArguments save;
};

void Run(const Options& options, Output& output) {
  if (IsGraphFile(options.input.file))
    throw UsageError("import reads data files; convert reads " + options.input.file);
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadInput(options.input, options.save, output);
  if (options.save.Wanted()) SaveOutput(*input.graph, 0, options.save, output);
  if (options.save.file == "-") return;
  PrintInfo(input, output);
}

}  // namespace

void DeclareImport(Command& command, Action& action) {
  auto options = std::make_shared<Options>();
  AddInput(command, options->input);
  AddSave(command, options->save);
  OnCommand(command, action, options, &Run);
}

}  // namespace tarnwick::cli
