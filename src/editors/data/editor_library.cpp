// The table that the program finds in this library.
#include "base/version.h"
#include "desk/editors/editor_border.h"
#include "editors/data/data_editor.h"

namespace tarnwick {

extern "C" {

static QWidget* editxyData(const PanelParts* parts, const EditorTrouble* trouble) {
  return WithinBorder(
      *trouble, [&]() -> QWidget* { return new DataEditor(*parts); },
      static_cast<QWidget*>(nullptr));
}

static void FollowData(QWidget* editor, Document* document, const PanelChange*,
                       const EditorTrouble* trouble) {
  WithinBorder(
      *trouble,
      [&] {
        static_cast<DataEditor*>(editor)->Follow(document);
        return true;
      },
      false);
}

/// Editors keep nothing beyond their windows.
static void deleteDataEditor() {}

extern const EditorTable tdtedtTable;
const EditorTable tdtedtTable = {kEditorTableVersion, kVersion.data(), &editxyData, &FollowData,
                                 &deleteDataEditor};

}  // extern "C"

}  // namespace tarnwick
