#include "app/files/files_feature.h"

#include <string>
#include <vector>

#include "app/files/load_place.h"
#include "app/files/open_folder.h"
#include "app/files/open_source.h"
#include "base/error.h"
#include "base/prompt.h"
#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/prompts/file_chooser.h"
#include "desk/prompts/file_trouble.h"

namespace tarnwick {
namespace {

std::filesystem::path StartFolder(const CommandContext& context) {
  return context.document ? context.document->Files().DataFolder() : std::filesystem::path();
}

void Open(CommandContext& context) {
  context.workspace.OpenFiles(context.chooser.FilesToOpen(StartFolder(context)));
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
    if (document->Files().ClosingLoses()) names += '"' + document->Name() + "\", ";
  }
  if (!names.empty()) {
    Question question{"Discard changes in graph(s) " + names + "?", {Answer::Yes, Answer::No}};
    if (context.prompt.Ask(question) != Answer::Yes) return;
  }
  for (Document* document : documents) {
    document->Files().GiveUp();
    context.workspace.Close(*document);
  }
}

void DiscardChanges(CommandContext& context) {
  Document& document = *context.document;
  const std::filesystem::path file = document.Files().ReloadedFrom();
  if (!file.empty() && TellIfMissing(file, context.prompt)) return;
  const bool loses = document.History().Changed() || document.Files().ClosingLoses();
  if (loses && context.prompt.Ask(ReloadQuestion(document)) != Answer::Yes) return;
  try {
    document.Files().Reload();
  } catch (const FileError& error) {
    TellFileError(file, error.what(), context.prompt);
  }
}

void EscapeExit(CommandContext& context) {
  if (context.document) {
    context.workspace.Close(*context.document);
  } else {
    context.workspace.ExitProgram();
  }
}

}  // namespace

Feature FilesFeature() {
  static constexpr Command kCommands[] = {
      {.name = "FileNew1",
       .caption = "&New",
       .shortcut = "Ctrl+N",
       .hint = "New|Create a New Graph Window",
       .icon = "new",
       .menu = Menu::File,
       .tool = ToolGroup::File,
       .run = [](CommandContext& c) { c.workspace.NewGraph(); }},
      {.name = "FileOpen1",
       .caption = "&Open",
       .shortcut = "Ctrl+O",
       .hint = "Open|Open a File",
       .icon = "open",
       .menu = Menu::File,
       .tool = ToolGroup::File,
       .run = Open},
      {.name = "FileOpenFolder1",
       .caption = "Open &Directory",
       .hint = "Open Directory|Open All Files in Directory",
       .icon = "open-folder",
       .menu = Menu::File,
       .run = OpenFolder},
      {.name = "FileOpenSource1",
       .caption = "Open Sou&rce",
       .hint = "Open Source|Open Data That Are No File: Data Bases, Links, Lines",
       .icon = "open-source",
       .menu = Menu::File,
       .run = OpenSource},
      {.name = "FileClose1",
       .caption = "Close &Window",
       .shortcut = "Ctrl+W",
       .hint = "Close|Close Current Window",
       .icon = "close",
       .menu = Menu::File,
       .group = 1,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { c.workspace.Close(*c.document); }},
      {.name = "FileCloseAll1",
       .caption = "&Close All",
       .hint = "Close All|Close All Windows",
       .icon = "close-all",
       .menu = Menu::File,
       .group = 1,
       .enabled = HasDocument,
       .run = CloseAll},
      {.name = "FileLoadData1",
       .caption = "&Load Data",
       .shortcut = "Ctrl+L",
       .hint = "Load Data|Load Data to Current Window",
       .icon = "load-data",
       .menu = Menu::File,
       .group = 2,
       .tool = ToolGroup::Data,
       .enabled = HasDocument,
       .run = LoadData},
      {.name = "FileReload1",
       .caption = "&Discard Changes",
       .hint = "Discard Changes|Reload Window From Template",
       .icon = "discard",
       .menu = Menu::File,
       .group = 2,
       .enabled = HasDocument,
       .run = DiscardChanges},
      {.name = "FileSave1",
       .caption = "&Save",
       .shortcut = "Ctrl+S",
       .hint = "Save|Save Current Window",
       .icon = "save",
       .menu = Menu::File,
       .group = 3,
       .tool = ToolGroup::File,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { c.workspace.Save(*c.document); }},
      {.name = "FileSaveAs1",
       .caption = "Save &As...",
       .hint = "Save As|Save Current Window with different Name",
       .icon = "save-as",
       .menu = Menu::File,
       .group = 3,
       .tool = ToolGroup::File,
       .enabled = HasDocument,
       .run = [](CommandContext& c) { c.workspace.SaveAs(*c.document); }},
      {.name = "FileExit1",
       .caption = "E&xit",
       .shortcut = "Alt+F4",
       .hint = "Exit|Exit Program",
       .icon = "exit",
       .menu = Menu::File,
       .group = 5,
       .run = [](CommandContext& c) { c.workspace.ExitProgram(); }},
      {.name = "FileEscExit1", .shortcut = "Esc", .run = EscapeExit},
  };
  return {.name = "files", .commands = {kCommands}};
}

}  // namespace tarnwick
