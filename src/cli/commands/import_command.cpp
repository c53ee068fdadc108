#include <memory>

#include "base/error.h"
#include "cli/commands/commands.h"
#include "cli/commands/info_json.h"
#include "cli/options/input_graph.h"
#include "cli/options/line_input.h"
#include "cli/options/save_output.h"
#include "cli/output/headless_gui.h"

namespace tarnwick::cli {
namespace {

struct ImportOptions {
  InputArguments input;
  LineArguments lines;
  SaveArguments save;
};

InputGraph ReadImportInput(const ImportOptions& options, Output& output) {
  const bool goes_on = options.lines.seconds || options.lines.keep;
  const bool lines = !options.lines.place.empty();
  if (!lines && !goes_on) return ReadInput(options.input, options.save, output);
  if (!lines && options.input.import.links.empty())
    throw UsageError("--for and --keep go with --lines or --link");
  const HeadlessGui gui;  // links need its events, looks its fonts
  InputGraph input = lines ? ReadLines(options.lines, options.input.import, output)
                           : ReadInput(options.input, output);
  if (!lines) ReadOn(input, options.lines, output);
  if (KeepsLook(options.save)) {
    const PictureSize size;
    GiveLook(input, options.input, QSizeF(size.width, size.height), output);
  }
  return input;
}

void RunImport(const ImportOptions& options, Output& output) {
  if (!options.lines.place.empty() && !options.input.file.empty())
    throw UsageError("--lines stands instead of FILE: only one of them is read");
  if (IsGraphFile(options.input.file))
    throw UsageError("import reads data files; convert reads " + options.input.file);
  if (options.save.Wanted()) CheckSave(options.save);
  const InputGraph input = ReadImportInput(options, output);
  if (options.save.Wanted()) SaveOutput(*input.graph, 0, options.save, output);
  if (options.save.file == "-") return;
  PrintInfo(input, output);
}

}  // namespace

void DeclareImport(Command& command, Action& action) {
  auto options = std::make_shared<ImportOptions>();
  AddInput(command, options->input);
  AddLineOptions(command, options->lines);
  AddSave(command, options->save);
  OnCommand(command, action, options, &RunImport);
}

}  // namespace tarnwick::cli
