#include "app/editors/editors_feature.h"

#include <string>

#include "base/prompt.h"

namespace tarnwick {
namespace {

constexpr const char* kGraphEditor = "tgredt.so";
constexpr const char* kDataEditor = "tdtedt.so";

void TellMissing(const char* library, Prompt& prompt) {
  prompt.Ask(
      {"Required library '" + std::string(library) + "' is missing. Try to re-install Tarnwick.",
       {Answer::Ok},
       Question::Kind::Error});
}

}  // namespace

Feature EditorsFeature() {
  static constexpr Command kCommands[] = {
      {.name = "EditData1",
       .caption = "Edit &Data",
       .hint = "Edit Data|Run Data Editor",
       .icon = "edit-data",
       .menu = Menu::Edit,
       .group = 2,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { TellMissing(kDataEditor, c.prompt); }},
      {.name = "EditGraph1",
       .caption = "&Edit Graph",
       .hint = "Edit Graph|Run Graph Editor",
       .icon = "edit-graph",
       .menu = Menu::Edit,
       .group = 2,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { TellMissing(kGraphEditor, c.prompt); }},
  };
  return {.name = "editors", .commands = {kCommands}};
}

}  // namespace tarnwick
