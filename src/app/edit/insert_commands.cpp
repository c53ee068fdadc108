// The Insert menu's commands: graphs inserted into the graph of the window.
#include <string>
#include "app/edit/edit_commands.h"

#include "base/prompt.h"
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
      {.name = "InsertNewGraph1",
       .caption = "&New Graph",
       .hint = "Insert Graph|Insert a New Graph into Current Graph",
       .icon = "graph-insert",
       .menu = Menu::Insert,
       .enabled = HasDocument,
       .run = InsertGraph},
      {.name = "InsertDelete1",
       .caption = "&Delete",
       .hint = "Delete Inserted Graph|Delete Selected Inserted Graph",
       .icon = "graph-delete",
       .menu = Menu::Insert,
       .group = 1,
       .enabled = HasSelectedChild,
       .run = DeleteGraph},
      {.name = "InsertClear1",
       .caption = "&Clear",
       .hint = "Clear Inserted Graphs|Delete All Inserted Graphs",
       .icon = "graph-clear",
       .menu = Menu::Insert,
       .group = 1,
       .enabled = HasChildren,
       .run = ClearGraphs},
      {.name = "InsertUnselect1",
       .caption = "&Unselect",
       .hint = "Unselect|Work on the Main Graph again",
       .icon = "graph-unselect",
       .menu = Menu::Insert,
       .group = 2,
       .enabled = HasSelectedChild,
       .run = Unselect},
  };
  return kRows;
}

}  // namespace tarnwick
