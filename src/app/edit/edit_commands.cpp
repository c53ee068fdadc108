// The Edit menu's commands: steps back and forth, and what is done to the current DataSet as a whole.
#include "app/edit/edit_commands.h"
#include <string>

#include "base/prompt.h"
#include "desk/document/document.h"

namespace tarnwick {
namespace {

bool CanUndo(const CommandContext& context) {
  return context.document && context.document->History().CanUndo();
}

bool CanRedo(const CommandContext& context) {
  return context.document && context.document->History().CanRedo();
}

/// "&Undo Move Point", or "&Undo" when there is no step.
CommandFace StepFace(const char* command, const std::string& step) {
  return step.empty() ? CommandFace() : CommandFace{.caption = command + (' ' + step)};
}

CommandFace UndoFace(const CommandContext& context) {
  return StepFace("&Undo", CanUndo(context) ? context.document->History().UndoName() : "");
}

CommandFace RedoFace(const CommandContext& context) {
  return StepFace("&Redo", CanRedo(context) ? context.document->History().RedoName() : "");
}

/// "Clear DataSet   "Graph_1.Voltage" ?"
std::string AboutCurrentDataSet(const char* verb, const Document& document) {
  return std::string(verb) + " DataSet   \"" + document.Name() + "." +
         document.Graph().CurrentSeries()->SeriesName() + "\" ?";
}

void ClearDataSet(CommandContext& context) {
  Document& document = *context.document;
  const Question question{AboutCurrentDataSet("Clear", document),
                          {Answer::Yes, Answer::No, Answer::All}};
  const Answer answer = context.prompt.Ask(question);
  if (answer == Answer::Yes) {
    document.Edit("Clear DataSet", [](TxyGraph& graph) { graph.CurrentSeries()->Clear(); });
  } else if (answer == Answer::All) {
    document.Edit("Clear All DataSets", [](TxyGraph& graph) {
      for (std::size_t i = 0; i < graph.SeriesCount(); ++i) graph.Series(i).Clear();
    });
  }
}

void DeleteDataSet(CommandContext& context) {
  Document& document = *context.document;
  const Question question{AboutCurrentDataSet("Delete", document), {Answer::Yes, Answer::No}};
  if (context.prompt.Ask(question) != Answer::Yes) return;
  document.Edit("Delete DataSet", [](TxyGraph& graph) {
    graph.DeleteSeries(static_cast<std::size_t>(graph.CurrentSeriesIndex()));
  });
}

}  // namespace

std::span<const Command> EditCommands() {
  static constexpr Command kRows[] = {
      {.name = "EditUndo1",
       .caption = "&Undo",
       .shortcut = "Ctrl+Z",
       .hint = "Undo|Take Back the Last Change",
       .icon = "undo",
       .menu = Menu::Edit,
       .tool = ToolGroup::Edit,
       .enabled = CanUndo,
       .run = [](CommandContext& c) { c.document->History().Undo(); },
       .face_now = UndoFace},
      {.name = "EditRedo1",
       .caption = "&Redo",
       .shortcut = "Ctrl+Shift+Z",
       .hint = "Redo|Make the Change Taken Back Last Again",
       .icon = "redo",
       .menu = Menu::Edit,
       .tool = ToolGroup::Edit,
       .enabled = CanRedo,
       .run = [](CommandContext& c) { c.document->History().Redo(); },
       .face_now = RedoFace},
      {.name = "EditClearSer1",
       .caption = "C&lear DataSet",
       .hint = "Clear Data|Clear Data in Current DataSet",
       .icon = "clear-data",
       .menu = Menu::Edit,
       .group = 2,
       .enabled = HasDataSet,
       .run = ClearDataSet},
      {.name = "EditDeleteSeries1",
       .caption = "&Delete DataSet",
       .hint = "Delete Current DataSet|Delete Current DataSet Permanently",
       .icon = "delete-data",
       .menu = Menu::Edit,
       .group = 2,
       .enabled = HasDataSet,
       .run = DeleteDataSet},
  };
  return kRows;
}

}  // namespace tarnwick
