// Places the windows of a workspace beside or above each other.
#pragma once

#include "desk/commands/workspace.h"

class QMdiArea;

namespace tarnwick {

/// Cascading piles windows of most of the workspace, each a title bar further down; tiling horizontally stacks windows in
/// full-width rows, vertically sets them side by side in full-height columns (from five windows on, in a grid). Minimised windows are left as they are, but by MinimizeAll.
void ArrangeWindows(QMdiArea& area, WindowArrangement arrangement);

}  // namespace tarnwick
