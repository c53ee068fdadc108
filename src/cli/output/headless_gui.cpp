#include "cli/output/headless_gui.h"

#include <cstdio>

namespace tarnwick::cli {
namespace {

/// Remarks about the missing desktop concern nobody here; what stops the work does.
void OnMessage(QtMsgType type, const QMessageLogContext&, const QString& text) {
  if (type == QtCriticalMsg || type == QtFatalMsg)
    std::fprintf(stderr, "tarnwick-cli: %s\n", qPrintable(text));
}

}  // namespace

HeadlessGui::HeadlessGui()
    : argument_count_(1),
      name_("tarnwick-cli"),
      arguments_{name_, nullptr},
      application_((qInstallMessageHandler(OnMessage), qputenv("QT_QPA_PLATFORM", "offscreen"),
                    argument_count_),
                   arguments_) {}

}  // namespace tarnwick::cli
