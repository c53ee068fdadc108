// The table that the program finds in this library.
#include "base/version.h"
#include "desk/editors/editor_border.h"
#include "editors/graph/graph_editor.h"

namespace tarnwick {

extern "C" {

static QWidget* editxyGraph(const PanelParts* parts, const EditorTrouble* trouble) {
  return WithinBorder(
      *trouble, [&]() -> QWidget* { return new GraphEditor(*parts); },
      static_cast<QWidget*>(nullptr));
}

static void FollowGraph(QWidget* editor, Document* document, const PanelChange*,
                        const EditorTrouble* trouble) {
  WithinBorder(
      *trouble,
      [&] {
        static_cast<GraphEditor*>(editor)->Follow(document);
        return true;
      },
      false);
}

/// Editors keep nothing beyond their windows.
static void deleteGraphEditor() {}

extern const EditorTable tgredtTable;
const EditorTable tgredtTable = {kEditorTableVersion, kVersion.data(), &editxyGraph, &FollowGraph,
                                 &deleteGraphEditor};

}  // extern "C"

}  // namespace tarnwick
