#include <memory>

#include "cli/commands/commands.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "cli/options/size_option.h"
#include "cli/output/headless_gui.h"
#include "graph/background_image.h"
#include "graph/files/file_kinds.h"
#include "results/regression_failures.h"

namespace tarnwick::cli {
namespace {

struct RenderOptions {
  InputArguments input;
  SaveArguments save;
  std::string size = "800x600";
  int dpi = 96;
};

void RunRender(const RenderOptions& options, Output& output) {
  const PictureSize size = ParseSize(options.size, options.dpi);
  CheckOverwrite(options.save);
  InputGraph input = ReadInput(options.input, output);
  const HeadlessGui gui;
  PictureOptions picture;
  picture.width = size.width;
  picture.height = size.height;
  picture.dpi = options.dpi;
  picture.millimetres = size.millimetres;
  GiveLook(input, options.input, QSizeF(size.width, size.height) * (96.0 / options.dpi), output);
  if (const std::string& missing = input.graph->Background().Error(); !missing.empty()) {
    output.Remarks() << "tarnwick-cli: " << missing << '\n';
  }
  for (const RegressionFailure& failure : RegressionFailures(*input.graph)) {
    output.Remarks() << "tarnwick-cli: " << failure.data_set << ": " << failure.why << '\n';
  }
  WritePicture(*input.graph, options.save.file, picture);
  if (output.IsJson()) {
    output.Document(
        {{"picture", options.save.file}, {"width", size.width}, {"height", size.height}});
  }
}

}  // namespace

void DeclareRender(Command& command, Action& action) {
  auto options = std::make_shared<RenderOptions>();
  AddInput(command, options->input);
  AddSave(command, options->save);
  command.Find("--output").Required();
  command.Add("--size", options->size, "Size in pixels, WxH, or in millimetres, WxHmm");
  command.Add("--dpi", options->dpi, "Dots per inch: how large texts and lines are")
      .Between(10, 2400);
  OnCommand(command, action, options, &RunRender);
}

}  // namespace tarnwick::cli
