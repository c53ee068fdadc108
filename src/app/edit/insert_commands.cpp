// The Insert menu's commands: graphs inserted into the graph of the window.
#include <string>

#include "app/window/command_table.h"
#include "base/prompt.h"
#include "desk/commands/command.h"
#include "desk/document/document.h"
#include "graph/edit/child_edit.h"

namespace tarnwick {
namespace {

bool HasSelectedChild(const CommandContext& context) {
  return context.document && context.document->SelectedChild();
}

bool HasChildren(const CommandContext& context) {
  return context.document && !context.document->WholeGraph().Children().empty();
}

void Unselect(CommandContext& context) {
  context.document->SelectChild(std::nullopt);
}

// Each of these works on the whole graph, so it takes the selection away first.

void InsertGraph(CommandContext& context) {
  Unselect(context);
  std::size_t inserted = 0;
  context.document->Edit("Insert Graph", [&](TxyGraph& graph) {
    const std::size_t number = graph.Children().size() + 1;
    inserted = InsertChild(graph, "Inserted Graph " + std::to_string(number));
  });
  context.document->SelectChild(inserted);
}

void DeleteGraph(CommandContext& context) {
  const std::size_t child = *context.document->SelectedChild();
  Unselect(context);
  context.document->Edit("Delete Inserted Graph",
                         [child](TxyGraph& graph) { graph.DeleteChild(child); });
}

void ClearGraphs(CommandContext& context) {
  const Question question{"Clear All Inserted Graphs?", {Answer::Yes, Answer::No}};
  if (context.prompt.Ask(question) != Answer::Yes) return;
  Unselect(context);
  context.document->Edit("Clear Inserted Graphs", &ClearChildren);
}

}  // namespace

std::span<const Command> InsertCommands() {
  static constexpr Command kRows[] = {
      {"InsertNewGraph1", "&New Graph", "", "Insert Graph|Insert a New Graph into Current Graph",
       "graph-insert", Menu::Insert, 0, ToolGroup::None, HasDocument, InsertGraph},
      {"InsertDelete1", "&Delete", "", "Delete Inserted Graph|Delete Selected Inserted Graph",
       "graph-delete", Menu::Insert, 1, ToolGroup::None, HasSelectedChild, DeleteGraph},
      {"InsertClear1", "&Clear", "", "Clear Inserted Graphs|Delete All Inserted Graphs",
       "graph-clear", Menu::Insert, 1, ToolGroup::None, HasChildren, ClearGraphs},
      {"InsertUnselect1", "&Unselect", "", "Unselect|Work on the Main Graph again",
       "graph-unselect", Menu::Insert, 2, ToolGroup::None, HasSelectedChild, Unselect},
  };
  return kRows;
}

}  // namespace tarnwick
