// The Edit menu's commands about the clipboard.
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include "app/edit/edit_commands.h"

#include "desk/commands/workspace.h"
#include "desk/document/document.h"
#include "desk/document/dropped_files.h"
#include "desk/document/graph_mime_data.h"
#include "desk/document/paste.h"
#include "graph/edit/paste_edit.h"

namespace tarnwick {
namespace {

void PutOnClipboard(const Document& document, GraphState state) {
  const TxyGraph& graph = document.Graph();
  const CopiedGraph kind = document.SelectedChild() ? CopiedGraph::Child : CopiedGraph::Whole;
  // The clipboard owns what it is given.
  QGuiApplication::clipboard()->setMimeData(
      new GraphMimeData(std::move(state), QSize(graph.ClientWidth(), graph.ClientHeight()), kind));
}

void Copy(CommandContext& context) {
  PutOnClipboard(*context.document, context.document->Graph().State());
}

bool CanCut(const CommandContext& context) {
  return context.document && (context.document->SelectedChild() || HasDataSet(context));
}

/// The selected inserted graph, else the current DataSet.
void Cut(CommandContext& context) {
  Document& document = *context.document;
  if (const auto child = document.SelectedChild()) {
    Copy(context);
    document.SelectChild(std::nullopt);
    document.Edit("Cut Graph", [&](TxyGraph& graph) { graph.DeleteChild(*child); });
    return;
  }
  PutOnClipboard(document, StateOfCurrentDataSet(document.Graph()));
  document.Edit("Cut DataSet", [](TxyGraph& graph) {
    graph.DeleteSeries(static_cast<std::size_t>(graph.CurrentSeriesIndex()));
  });
}

void PasteClipboard(CommandContext& context) {
  const QMimeData* data = QGuiApplication::clipboard()->mimeData();
  const QMimeData nothing;
  const QMimeData& present = data ? *data : nothing;
  if (present.hasFormat(kGraphFormat) || !present.hasUrls()) {
    Paste(*context.document, present);
    return;
  }
  for (const auto& file : DroppedFiles(present)) {
    context.workspace.LoadInto(*context.document, file);
  }
}

}  // namespace

std::span<const Command> ClipboardCommands() {
  static constexpr Command kRows[] = {
      {.name = "EditCut1",
       .caption = "Cu&t",
       .shortcut = "Ctrl+X",
       .hint = "Cut|Cuts the selection and puts it on the Clipboard",
       .icon = "cut",
       .menu = Menu::Edit,
       .group = 1,
       .tool = ToolGroup::Edit,
       .enabled = CanCut,
       .run = Cut},
      {.name = "EditCopy1",
       .caption = "&Copy",
       .shortcut = "Ctrl+C",
       .hint = "Copy|Copies Graph Image on the Clipboard",
       .icon = "copy",
       .menu = Menu::Edit,
       .group = 1,
       .tool = ToolGroup::Edit,
       .enabled = HasDocument,
       .run = Copy},
      {.name = "EditPaste1",
       .caption = "&Paste",
       .shortcut = "Ctrl+V",
       .hint = "Paste|Inserts Clipboard contents",
       .icon = "paste",
       .menu = Menu::Edit,
       .group = 1,
       .tool = ToolGroup::Edit,
       .enabled = HasDocument,
       .run = PasteClipboard},
  };
  return kRows;
}

}  // namespace tarnwick
