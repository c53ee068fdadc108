#include "app/window/undo_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace tarnwick {
namespace {

enum class Way { Undo, Redo };

/// False for what is no field of text, too.
bool HasNothing(const QWidget& field, Way way) {
  if (const auto* text = qobject_cast<const QPlainTextEdit*>(&field)) {
    const QTextDocument& typed = *text->document();
    return way == Way::Undo ? !typed.isUndoAvailable() : !typed.isRedoAvailable();
  }
  const auto* line = qobject_cast<const QLineEdit*>(&field);
  if (!line) line = field.findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
  return line && (way == Way::Undo ? !line->isUndoAvailable() : !line->isRedoAvailable());
}

}  // namespace

UndoKeys::UndoKeys() {
  qApp->installEventFilter(this);
}

bool UndoKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::ShortcutOverride || !watched->isWidgetType()) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  const bool undo = key.matches(QKeySequence::Undo);
  if (!undo && !key.matches(QKeySequence::Redo)) return false;
  // A field takes the key for itself, whatever it could do with it.
  if (!HasNothing(static_cast<QWidget&>(*watched), undo ? Way::Undo : Way::Redo)) return false;
  event->ignore();
  return true;
}

}  // namespace tarnwick
