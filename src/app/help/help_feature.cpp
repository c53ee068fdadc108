#include "app/help/help_feature.h"

#include "base/prompt.h"
#include "base/version.h"

namespace tarnwick {
namespace {

void ShowAbout(CommandContext& context) {
  context.prompt.Ask({"Tarnwick " + std::string(kVersion) +
                          "\n\nPlots and analyses X-Y data.\n\n"
                          "Copyright 2026 the Tarnwick authors. MIT licence.",
                      {Answer::Ok},
                      Question::Kind::Information});
}

}  // namespace

Feature HelpFeature() {
  static constexpr Command kCommands[] = {
      {.name = "HelpAbout1",
       .caption = "&About...",
       .hint = "About|Displays program information, version number, and copyright",
       .icon = "about",
       .menu = Menu::Help,
       .run = ShowAbout},
  };
  return {.name = "help", .commands = {kCommands}};
}

}  // namespace tarnwick
