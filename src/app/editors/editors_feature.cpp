#include "app/editors/editors_feature.h"

#include <memory>
#include <string_view>

#include "base/error.h"
#include "base/prompt.h"
#include "desk/commands/command_actions.h"
#include "desk/commands/kept_state.h"
#include "desk/editors/editor_library.h"
#include "desk/editors/editor_panel.h"
#include "desk/settings/program_paths.h"

namespace tarnwick {
namespace {

constexpr std::string_view kGraphLibrary = "tgredt";
constexpr std::string_view kDataLibrary = "tdtedt";

/// Loaded when first wanted, kept until the program's window closes.
struct KeptLibraries {
  std::shared_ptr<const EditorLibrary> graph;
  std::shared_ptr<const EditorLibrary> data;
};

using KeptLibrary = std::shared_ptr<const EditorLibrary> KeptLibraries::*;

/// Null when there is no such editor. A library that is missing or damaged is told.
template <const std::string_view& kName, KeptLibrary kKept>
std::shared_ptr<const EditorLibrary> LibraryOf(CommandContext& context) {
  auto& library = context.kept.Of<KeptLibraries>().*kKept;
  if (library) return library;
  try {
    library = LoadEditorLibrary(kName, context.paths.libraries);
  } catch (const Error& error) {
    context.prompt.Ask({error.what(), {Answer::Ok}, Question::Kind::Error});
  }
  return library;
}

template <const std::string_view& kName, KeptLibrary kKept>
std::unique_ptr<Panel> MakeEditor(const PanelParts& parts) {
  std::shared_ptr<const EditorLibrary> library;
  parts.actions.RunAsCommand(
      [&](CommandContext& context) { library = LibraryOf<kName, kKept>(context); });
  return std::make_unique<EditorPanel>(std::move(library), parts);
}

constexpr PanelRow kPanels[] = {{.name = "GraphEditor",
                                 .caption = "Graph Editor",
                                 .side = DockSide::Right,
                                 .make = MakeEditor<kGraphLibrary, &KeptLibraries::graph>},
                                {.name = "DataEditor",
                                 .caption = "Data Editor",
                                 .side = DockSide::Right,
                                 .make = MakeEditor<kDataLibrary, &KeptLibraries::data>}};

void EditGraph(CommandContext& context) {
  if (LibraryOf<kGraphLibrary, &KeptLibraries::graph>(context)) context.panels.Show(kPanels[0]);
}

void EditData(CommandContext& context) {
  if (LibraryOf<kDataLibrary, &KeptLibraries::data>(context)) context.panels.Show(kPanels[1]);
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
       .run = EditData},
      {.name = "EditGraph1",
       .caption = "&Edit Graph",
       .hint = "Edit Graph|Run Graph Editor",
       .icon = "edit-graph",
       .menu = Menu::Edit,
       .group = 2,
       .tool = ToolGroup::Edit,
       .popup = 3,
       .enabled = HasDocument,
       .run = EditGraph},
  };
  return {.name = "editors", .commands = {kCommands}, .panels = kPanels};
}

}  // namespace tarnwick
