#include <filesystem>
#include <memory>

#include "cli/commands/commands.h"
#include "cli/commands/headless_gui.h"
#include "cli/options/input_graph.h"
#include "cli/options/save_output.h"
#include "cli/options/size_option.h"
#include "graph/axes/plot_metrics.h"
#include "graph/background_image.h"
#include "graph/files/file_kinds.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/second_quantity.h"
#include "results/regression_failures.h"

namespace tarnwick::cli {
namespace {

struct Options {
  InputArguments input;
  SaveArguments save;
  std::string size = "800x600";
  int dpi = 96;
};

void Run(const Options& options, Output& output) {
  const PictureSize size = ParseSize(options.size, options.dpi);
  CheckOverwrite(options.save);
  const InputGraph input = ReadInput(options.input);
  const HeadlessGui gui;
  PictureOptions picture;
  picture.width = size.width;
  picture.height = size.height;
  picture.dpi = options.dpi;
  picture.millimetres = size.millimetres;
  // A data file has no look of its own: it gets the one that the desktop program gives it.
  if (input.from_data) {
    const double scale = 96.0 / options.dpi;
    FinishedLookOptions look;
    look.title = std::filesystem::path(options.input.file).stem().string();
    SeparateQuantities(*input.graph);
    ApplyFinishedLook(*input.graph, QSizeF(size.width * scale, size.height * scale), TextMetrics(),
                      look);
  }
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
  auto options = std::make_shared<Options>();
  AddInput(command, options->input);
  AddSave(command, options->save);
  command.Find("--output").Required();
  command.Add("--size", options->size, "Size in pixels, WxH, or in millimetres, WxHmm");
  command.Add("--dpi", options->dpi, "Dots per inch: how large texts and lines are")
      .Between(10, 2400);
  OnCommand(command, action, options, &Run);
}

}  // namespace tarnwick::cli
