#include "app/edit/edit_feature.h"

#include "app/edit/edit_commands.h"

namespace tarnwick {

Feature EditFeature() {
  return {.name = "edit", .commands = {EditCommands(), ClipboardCommands(), InsertCommands()}};
}

}  // namespace tarnwick
