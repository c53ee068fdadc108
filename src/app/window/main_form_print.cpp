// The main window's part in printing: its printer, the window that prints, the window about paper.
#include <QPrinter>

#include "app/print/page_dialog.h"
#include "app/print/print_dialog.h"
#include "app/print/print_graph.h"
#include "app/window/main_form.h"
#include "desk/document/document.h"

namespace tarnwick {

QPrinter& T_MainForm::Printer() {
  if (!printer_) {
    // Made when first needed: asking for the printers of a network takes its time.
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    RestorePaper(*parts_.settings, *printer_);
  }
  return *printer_;
}

void T_MainForm::Print(Document& document) {
  PrintDialog dialog(document, Printer(), *parts_.chooser, *parts_.prompt, this);
  dialog.exec();
  StorePaper(Printer(), *parts_.settings);
}

void T_MainForm::SetUpPrinter() {
  PageDialog dialog(Printer().pageLayout(), this);
  if (dialog.exec() != QDialog::Accepted) return;
  SetPaper(Printer(), dialog.Page());
  StorePaper(Printer(), *parts_.settings);
}

}  // namespace tarnwick
