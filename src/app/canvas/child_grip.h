// What of an inserted graph's frame the mouse takes hold of, and where dragging it puts the frame. Knows pixels, neither
// documents nor events.
#pragma once

#include <QCursor>
#include <QPointF>
#include <QRectF>
#include <cstdint>

#include "graph/xy_graph.h"

class QPainter;

namespace tarnwick {

enum class ChildGrip : std::uint8_t {
  None,
  Body,  ///< moves it
  Left,
  Right,
  Top,
  Bottom,
  TopLeft,
  TopRight,
  BottomLeft,
  BottomRight
};

/// The handles at corners and middles of a selected frame come first, then what is inside it.
ChildGrip GripAt(const QRectF& frame, QPointF place);
QCursor CursorOf(ChildGrip grip);
/// Draws one handle of what is selected.
void PaintHandle(QPainter& painter, QPointF middle);
/// Draws a selected frame with its handles.
void PaintGrips(QPainter& painter, const QRectF& frame);

/// The place after dragging so many pixels. An edge that is dragged stops kSmallestChild before the opposite one.
TxyChildGr::Place Dragged(TxyChildGr::Place place, ChildGrip grip, int right, int down);

}  // namespace tarnwick
