#include "app/print/print_feature.h"

#include <QPrinter>
#include <memory>

#include "app/print/page_dialog.h"
#include "app/print/print_dialog.h"
#include "app/print/print_graph.h"
#include "desk/commands/kept_state.h"
#include "desk/settings/settings.h"

namespace tarnwick {
namespace {

/// Made when first needed: asking for the printers of a network takes its time.
struct KeptPrinter {
  std::unique_ptr<QPrinter> printer;
};

QPrinter& Printer(CommandContext& context) {
  std::unique_ptr<QPrinter>& printer = context.kept.Of<KeptPrinter>().printer;
  if (!printer) {
    printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    RestorePaper(context.settings, *printer);
  }
  return *printer;
}

void Print(CommandContext& context) {
  QPrinter& printer = Printer(context);
  PrintDialog dialog(*context.document, printer, context.chooser, context.prompt,
                     context.dialog_parent);
  dialog.exec();
  StorePaper(printer, context.settings);
}

void SetUpPrinter(CommandContext& context) {
  QPrinter& printer = Printer(context);
  PageDialog dialog(printer.pageLayout(), context.dialog_parent);
  if (dialog.exec() != QDialog::Accepted) return;
  SetPaper(printer, dialog.Page());
  StorePaper(printer, context.settings);
}

}  // namespace

Feature PrintFeature() {
  static constexpr Command kCommands[] = {
      {.name = "FilePrint1",
       .caption = "&Print",
       .shortcut = "Ctrl+P",
       .hint = "Print|Print Current Window",
       .icon = "print",
       .menu = Menu::File,
       .group = 4,
       .tool = ToolGroup::File,
       .enabled = HasDocument,
       .run = Print},
      {.name = "FilePrnSetup1",
       .caption = "Printer Set&up",
       .icon = "print-setup",
       .menu = Menu::File,
       .group = 4,
       .run = SetUpPrinter},
  };
  return {.name = "print", .commands = {kCommands}, .settings = PaperSettings()};
}

}  // namespace tarnwick
