#include "app/help/help_keys.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <utility>

#include "app/help/help_viewer.h"

namespace tarnwick {

HelpKeys::HelpKeys(QWidget& window, std::function<CommandContext()> context)
    : QObject(&window), context_(std::move(context)) {
  QCoreApplication::instance()->installEventFilter(this);
}

bool HelpKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  const auto* widget = qobject_cast<QWidget*>(watched);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier || widget == nullptr) {
    return false;
  }
  const QStringList topics = TopicsOf(widget);
  // An open menu takes every key and click.
  while (QWidget* const popup = QApplication::activePopupWidget()) popup->close();
  CommandContext context = context_();
  RunAsCommand([&topics](CommandContext& used) { ShowHelpOn(used, topics); }, context);
  return true;
}

}  // namespace tarnwick
