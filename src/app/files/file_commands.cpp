// The File menu's commands.
#include <string>
#include <vector>

#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "base/prompt.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"

namespace tarnwick {
namespace {

std::filesystem::path StartFolder(const CommandContext& context) {
  return context.document ? context.document->Files().DataFolder() : std::filesystem::path();
}

void Open(CommandContext& context) {
  for (const auto& path : context.chooser.FilesToOpen(StartFolder(context))) {
    context.workspace.OpenFile(path);
  }
}

void LoadData(CommandContext& context) {
  for (const auto& path : context.chooser.FilesToOpen(StartFolder(context))) {
    context.workspace.LoadInto(*context.document, path);
  }
}

void CloseAll(CommandContext& context) {
  const std::vector<Document*> documents = context.workspace.Documents();
  std::string names;
  for (const Document* document : documents) {
    if (document->History().Changed()) names += '"' + document->Name() + "\", ";
  }
  if (!names.empty()) {
    Question question{"Discard changes in graph(s) " + names + "?", {Answer::Yes, Answer::No}};
    if (context.prompt.Ask(question) != Answer::Yes) return;
  }
  for (Document* document : documents) {
    document->History().SetChanged(false);
    context.workspace.Close(*document);
  }
}

void DiscardChanges(CommandContext& context) {
  Document& document = *context.document;
  if (document.History().Changed()) {
    Question question{"This will discard all changes. Reload " + document.Name() + " ?",
                      {Answer::Yes, Answer::No}};
    if (context.prompt.Ask(question) != Answer::Yes) return;
  }
  document.Files().Reload();
}

void EscapeExit(CommandContext& context) {
  if (context.document) {
    context.workspace.Close(*context.document);
  } else {
    context.workspace.ExitProgram();
  }
}

}  // namespace

std::span<const Command> FileCommands() {
  static constexpr Command kRows[] = {
      {"FileNew1", "&New", "Ctrl+N", "New|Create a New Graph Window", "new", Menu::File, 0,
       ToolGroup::File, nullptr, [](CommandContext& c) { c.workspace.NewGraph(); }},
      {"FileOpen1", "&Open", "Ctrl+O", "Open|Open a File", "open", Menu::File, 0, ToolGroup::File,
       nullptr, Open},
      {"FileClose1", "Close &Window", "Ctrl+W", "Close|Close Current Window", "close", Menu::File,
       1, ToolGroup::None, HasDocument, [](CommandContext& c) { c.workspace.Close(*c.document); }},
      {"FileCloseAll1", "&Close All", "", "Close All|Close All Windows", "close-all", Menu::File, 1,
       ToolGroup::None, HasDocument, CloseAll},
      {"FileLoadData1", "&Load Data", "Ctrl+L", "Load Data|Load Data to Current Window",
       "load-data", Menu::File, 2, ToolGroup::Data, HasDocument, LoadData},
      {"FileReload1", "&Discard Changes", "", "Discard Changes|Reload Window From Template",
       "discard", Menu::File, 2, ToolGroup::None, HasDocument, DiscardChanges},
      {"FileSave1", "&Save", "Ctrl+S", "Save|Save Current Window", "save", Menu::File, 3,
       ToolGroup::File, HasDocument, [](CommandContext& c) { c.workspace.Save(*c.document); }},
      {"FileSaveAs1", "Save &As...", "", "Save As|Save Current Window with different Name",
       "save-as", Menu::File, 3, ToolGroup::File, HasDocument,
       [](CommandContext& c) { c.workspace.SaveAs(*c.document); }},
      {"FileExit1", "E&xit", "Alt+F4", "Exit|Exit Program", "exit", Menu::File, 5, ToolGroup::None,
       nullptr, [](CommandContext& c) { c.workspace.ExitProgram(); }},
      {"FileEscExit1", "", "Esc", "", "", Menu::None, 0, ToolGroup::None, nullptr, EscapeExit},
  };
  return kRows;
}

}  // namespace tarnwick
