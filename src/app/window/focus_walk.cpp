#include "app/window/focus_walk.h"

#include <QMdiSubWindow>

namespace tarnwick {
namespace {

bool IsTabStop(const QWidget& widget) {
  return (widget.focusPolicy() & Qt::TabFocus) != 0 && !widget.focusProxy() && widget.isEnabled() &&
         widget.isVisible();
}

const QMdiSubWindow* GraphWindowOf(const QWidget& widget) {
  const QWidget* parent = &widget;
  while (parent && !qobject_cast<const QMdiSubWindow*>(parent)) parent = parent->parentWidget();
  return static_cast<const QMdiSubWindow*>(parent);
}

}  // namespace

QWidget* NextControl(QWidget& window, const QMdiSubWindow* active, WalkDirection direction) {
  QWidget* const from = window.focusWidget() ? window.focusWidget() : &window;
  const auto next_of = [direction](const QWidget& widget) {
    return direction == WalkDirection::Forward ? widget.nextInFocusChain()
                                               : widget.previousInFocusChain();
  };
  for (QWidget* next = next_of(*from); next && next != from; next = next_of(*next)) {
    if (next->window() != &window || !IsTabStop(*next)) continue;
    const QMdiSubWindow* const graph = GraphWindowOf(*next);
    if (!graph || graph == active) return next;
  }
  return nullptr;
}

}  // namespace tarnwick
