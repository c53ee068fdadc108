// The mouse pointers drawn for this program: dark with a light edge, to be seen on any picture. Knows no mode.
#pragma once

#include <QCursor>

namespace tarnwick {

/// The drawings, by their numbers among the program's cursors.
enum class CanvasCursor {
  UpArrow = 11,    ///< grasps a point
  DownArrow = 12,  ///< sets a point
  Pen = 13,
  PointDel = 14,
  MarkBox = 15,  ///< places marks, moves objects
  Zoom = 16
};

QCursor DrawnCursor(CanvasCursor cursor);

}  // namespace tarnwick
