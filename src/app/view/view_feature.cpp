#include "app/view/view_feature.h"

#include "app/view/view_commands.h"

namespace tarnwick {

Feature ViewFeature() {
  return {.name = "view", .commands = {ViewCommands(), LegendCommands()}};
}

}  // namespace tarnwick
