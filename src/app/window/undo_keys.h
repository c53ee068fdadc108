// The keys of Undo and Redo in a field beside the graph: the field's own while it has something to take back, else the
// graph's. Knows fields of text; what is undone is the commands'.
#pragma once

#include <QObject>

namespace tarnwick {

class UndoKeys final : public QObject {
 public:
  /// Looks at the keys of the whole program.
  UndoKeys();

  bool eventFilter(QObject* watched, QEvent* event) override;
};

}  // namespace tarnwick
