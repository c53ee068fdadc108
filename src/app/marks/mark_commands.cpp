// The Mark menu's commands on marks that there are, and what a mark does to the data: base line and origin of X.
#include "app/window/command_table.h"
#include "app/window/workspace.h"
#include "base/error.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

void DeleteCurrentMark(CommandContext& context) {
  const Mark* mark = CurrentMark(context.document->Graph());
  if (!mark) throw Error("No Mark Found!");
  context.document->Edit("Delete Mark",
                         [id = mark->id](TxyGraph& graph) { DeleteMark(graph, id); });
}

void ToggleMarks(CommandContext& context) {
  const bool shown = context.document->Graph().GetAppearance().marks_are_shown;
  context.document->Edit(shown ? "Hide Marks" : "Show Marks", [&](TxyGraph& graph) {
    Appearance appearance = graph.GetAppearance();
    appearance.marks_are_shown = !shown;
    graph.SetAppearance(appearance);
  });
}

std::string MarksCaption(const Document& document) {
  return document.Graph().GetAppearance().marks_are_shown ? "Hide &Marks" : "Show &Marks";
}

void TakeBaseLine(CommandContext& context) {
  context.document->Edit("Set Base Line", &SetBaseLineFromCurrentMark);
}

void ShiftToMark(CommandContext& context) {
  context.document->Edit("Shift X Axis", &MoveXOriginToCurrentMark);
}

}  // namespace

std::span<const Command> MarkCommands() {
  static constexpr Command kRows[] = {
      {"MarkDelete1", "&Delete", "", "Delete Mark|Delete Current Mark", "mark-delete", Menu::Mark,
       2, ToolGroup::None, HasDocument, DeleteCurrentMark},
      {"MarkShowHide1", "Show/Hide &Marks", "", "Hide/Show Marks|Hide/Show Marks in Current Window",
       "marks", Menu::Mark, 2, ToolGroup::Show, HasDocument, ToggleMarks, MarksCaption},
      {"MarkBaseLine1", "Set as &BaseLine", "",
       "Set as Baseline for Current DataSet|Set Current Mark as Baseline", "mark-base-line",
       Menu::Mark, 3, ToolGroup::None, HasDocument, TakeBaseLine},
      {"MarkEdit1", "&Edit Marks", "", "Mark Editor|Run Mark Editor", "mark-edit", Menu::Mark, 3,
       ToolGroup::None, HasDocument, [](CommandContext& c) { c.workspace.EditMarks(*c.document); }},
      {"editXShift1", "To Current &Mark", "", "Set Mark as Zero Time|Set Current Mark as Zero Time",
       "mark-origin", Menu::XAxisShift, 0, ToolGroup::None, HasDocument, ShiftToMark},
  };
  return kRows;
}

}  // namespace tarnwick
