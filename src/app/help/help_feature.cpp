#include "app/help/help_feature.h"

#include <QApplication>

#include "app/help/help_keys.h"
#include "app/help/help_viewer.h"
#include "base/prompt.h"
#include "base/version.h"

namespace tarnwick {
namespace {

void ShowContents(CommandContext& context) {
  ShowHelpOn(context, TopicsOf(QApplication::focusWidget()));
}

void WatchKeys(QWidget& window, std::function<CommandContext()> context) {
  new HelpKeys(window, std::move(context));  // the window's own
}

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
      {.name = "HelpContents1",
       .caption = "&Contents",
       .shortcut = "F1",
       .hint = "Help|Open Help File",
       .icon = "help-contents",
       .menu = Menu::Help,
       .run = ShowContents},
      {.name = "HelpTopicSearch1",
       .caption = "&Topic Search",
       .hint = "Help Topic Search|Keyword Search in Help File",
       .icon = "help-search",
       .menu = Menu::Help,
       .run = ShowHelpIndex},
      {.name = "HelpAbout1",
       .caption = "&About...",
       .hint = "About|Displays program information, version number, and copyright",
       .icon = "about",
       .menu = Menu::Help,
       .group = 1,
       .run = ShowAbout},
  };
  return {.name = "help", .commands = {kCommands}, .begin = WatchKeys};
}

}  // namespace tarnwick
