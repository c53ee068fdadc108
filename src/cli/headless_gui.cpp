#include "cli/headless_gui.h"

namespace tarnwick::cli {

HeadlessGui::HeadlessGui()
    : argument_count_(1),
      name_("tarnwick-cli"),
      arguments_{name_, nullptr},
      application_((qputenv("QT_QPA_PLATFORM", "offscreen"), argument_count_), arguments_) {}

}  // namespace tarnwick::cli
