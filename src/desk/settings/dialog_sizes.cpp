#include "desk/settings/dialog_sizes.h"

#include <QApplication>
#include <QByteArray>
#include <QDialog>
#include <QEvent>

#include "desk/settings/settings.h"
#include "desk/widgets/screen_room.h"

namespace tarnwick {
namespace {

Setting<QSize> SizeOf(const QByteArray& dialog) {
  return {"Dialogs", dialog.constData(), {}, "Size of the dialog"};
}

}  // namespace

DialogSizes::DialogSizes(Settings& settings) : settings_(settings) {
  qApp->installEventFilter(this);
}

bool DialogSizes::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::Show && event->type() != QEvent::Hide) return false;
  auto* const dialog = qobject_cast<QDialog*>(watched);
  const bool comes = event->type() == QEvent::Show && !event->spontaneous();
  // Qt calls its own by their classes, or not at all.
  const bool is_ours = dialog != nullptr && !event->spontaneous() &&
                       !dialog->objectName().isEmpty() && !dialog->objectName().startsWith('Q');
  if (is_ours && !comes) Gone(*dialog);
  if (is_ours && comes) TakeStored(*dialog);
  if (dialog != nullptr && comes) FitScreen(*dialog);
  if (is_ours && comes) begun_with_[dialog->objectName()] = dialog->size();
  return false;
}

void DialogSizes::TakeStored(QWidget& dialog) const {
  const QSize stored = settings_.Read(SizeOf(dialog.objectName().toUtf8()));
  if (stored.isValid()) dialog.resize(stored);
}

void DialogSizes::Gone(const QWidget& dialog) {
  const auto begun = begun_with_.find(dialog.objectName());
  if (begun == begun_with_.end() || begun->second == dialog.size()) return;
  settings_.Write(SizeOf(dialog.objectName().toUtf8()), dialog.size());
}

}  // namespace tarnwick
