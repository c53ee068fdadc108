// Places the windows of a workspace beside or above each other.
#pragma once

#include <QList>
#include <QObject>
#include <QRect>
#include <optional>

#include "desk/commands/workspace.h"

class QMdiArea;

namespace tarnwick {

/// Cascading piles windows of most of the workspace, each a title bar further down; tiling horizontally stacks windows in
/// full-width rows, vertically sets them side by side in full-height columns (from five windows on, in a grid). Minimised
/// windows are left as they are, but by MinimizeAll.
void ArrangeWindows(QMdiArea& area, WindowArrangement arrangement);

/// Arranges windows, and anew whenever the workspace gets another size, until one is moved, opened or closed.
class KeptArrangement final : public QObject {
  Q_OBJECT

 public:
  /// Part of `area`.
  explicit KeptArrangement(QMdiArea& area);
  void Arrange(WindowArrangement arrangement);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QList<QRect> Places() const;

  QMdiArea& area_;
  std::optional<WindowArrangement> arrangement_;
  QList<QRect> places_;  // that it left the windows at
};

}  // namespace tarnwick
