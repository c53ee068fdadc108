#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/info_json.h"
#include "cli/options/function_input.h"
#include "cli/options/input_graph.h"
#include "fit/model/fit_function_file.h"

namespace tarnwick::cli {
namespace {

void RunInfo(const InputArguments& arguments, Output& output) {
  if (IsFitFunctionFile(arguments.file)) {
    return PrintFunctionInfo(LoadFitFunction(arguments.file), output);
  }
  const InputGraph input = ReadInput(arguments, output);
  PrintInfo(input, output);
}

}  // namespace

void DeclareInfo(Command& command, Action& action) {
  auto arguments = std::make_shared<InputArguments>();
  AddInput(command, *arguments);
  OnCommand(command, action, arguments, &RunInfo);
}

}  // namespace tarnwick::cli
