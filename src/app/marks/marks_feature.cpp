#include "app/marks/marks_feature.h"

#include "app/marks/mark_editor.h"
#include "base/error.h"
#include "desk/document/document.h"
#include "desk/document/open_edit.h"
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

CommandFace MarksFace(const CommandContext& context) {
  if (!context.document) return {};
  const bool shown = context.document->Graph().GetAppearance().marks_are_shown;
  return {.caption = shown ? "Hide &Marks" : "Show &Marks"};
}

void TakeBaseLine(CommandContext& context) {
  context.document->Edit("Set Base Line", &SetBaseLineFromCurrentMark);
}

void ShiftToMark(CommandContext& context) {
  context.document->Edit("Shift X Axis", &MoveXOriginToCurrentMark);
}

/// What was edited last becomes the current mark.
void EditMarks(CommandContext& context) {
  TxyGraph& graph = context.document->Graph();
  const Mark* current = CurrentMark(graph);
  OpenEdit step(*context.document, "Edit Marks");
  TxyMark editor(*context.document, current ? current->id : -1, context.prompt,
                 context.dialog_parent);
  if (editor.exec() == QDialog::Rejected) return;  // which takes all of it back
  step.Finish();
  const std::optional<Mark> edited = editor.EditedMark();
  if (edited) SetCurrentMark(graph, edited->id);
}

}  // namespace

Feature MarksFeature() {
  static constexpr Command kCommands[] = {
      {.name = "MarkDelete1",
       .caption = "&Delete",
       .hint = "Delete Mark|Delete Current Mark",
       .icon = "mark-delete",
       .menu = Menu::Mark,
       .group = 2,
       .enabled = HasDocument,
       .run = DeleteCurrentMark},
      {.name = "MarkShowHide1",
       .caption = "Show/Hide &Marks",
       .hint = "Hide/Show Marks|Hide/Show Marks in Current Window",
       .icon = "marks",
       .menu = Menu::Mark,
       .group = 2,
       .tool = ToolGroup::Show,
       .popup = 3,
       .enabled = HasDocument,
       .run = ToggleMarks,
       .face_now = MarksFace},
      {.name = "MarkBaseLine1",
       .caption = "Set as &BaseLine",
       .hint = "Set as Baseline for Current DataSet|Set Current Mark as Baseline",
       .icon = "mark-base-line",
       .menu = Menu::Mark,
       .group = 3,
       .enabled = HasDocument,
       .run = TakeBaseLine},
      {.name = "MarkEdit1",
       .caption = "&Edit Marks",
       .hint = "Mark Editor|Run Mark Editor",
       .icon = "mark-edit",
       .menu = Menu::Mark,
       .group = 3,
       .enabled = HasDocument,
       .run = EditMarks},
      {.name = "editXShift1",
       .caption = "To Current &Mark",
       .hint = "Set Mark as Zero Time|Set Current Mark as Zero Time",
       .icon = "mark-origin",
       .menu = Menu::XAxisShift,
       .enabled = HasDocument,
       .run = ShiftToMark},
  };
  return {.name = "marks", .commands = {kCommands}};
}

}  // namespace tarnwick
