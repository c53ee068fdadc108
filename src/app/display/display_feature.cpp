#include "app/display/display_feature.h"

namespace tarnwick {

Feature DisplayFeature() {
  static constexpr Command kCommands[] = {
      {.name = "WindowShowDisplay1",
       .caption = "Hide &Displays",
       .hint = "Hide Displays|Hide Display Panel",
       .icon = "displays",
       .menu = Menu::View},
      {.name = "WindowMoveDisplay1",
       .caption = "&Move Displays",
       .hint = "UnDock Display Panel|UnDock Display Panel",
       .icon = "displays-move",
       .menu = Menu::View},
  };
  return {.name = "display", .commands = {kCommands}};
}

}  // namespace tarnwick
