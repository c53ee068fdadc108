// Which control the keyboard goes to next in a window with several graphs: the focus brings the graph window that it enters to
// the front, so it enters none but the one worked on. Knows widgets; no document.
#pragma once

class QMdiSubWindow;
class QWidget;

namespace tarnwick {

enum class WalkDirection { Forward, Backward };

/// The control that TAB reaches from the one that has the focus in `window`; null when there is none. `active`, which may be
/// null, is the only graph window that is entered.
QWidget* NextControl(QWidget& window, const QMdiSubWindow* active, WalkDirection direction);

}  // namespace tarnwick
