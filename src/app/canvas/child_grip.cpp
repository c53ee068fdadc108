#include "app/canvas/child_grip.h"

#include <QPainter>
#include <algorithm>
#include <array>

#include "graph/edit/child_edit.h"

namespace tarnwick {
namespace {

constexpr QColor kInk(0x2f, 0x6f, 0xb5);
constexpr double kHandle = 8;  // side of a handle as drawn
constexpr double kReach = 6;   // from a handle's middle, for the mouse

/// A handle: where on the frame it sits, from -1 (left, top) to 1, and what it is.
struct Handle {
  ChildGrip grip;
  int across;
  int down;
  Qt::CursorShape cursor;
};

// Corners first: on a small frame they matter more than the middles.
constexpr std::array<Handle, 8> kHandles = {{
    {ChildGrip::BottomRight, 1, 1, Qt::SizeFDiagCursor},
    {ChildGrip::TopLeft, -1, -1, Qt::SizeFDiagCursor},
    {ChildGrip::TopRight, 1, -1, Qt::SizeBDiagCursor},
    {ChildGrip::BottomLeft, -1, 1, Qt::SizeBDiagCursor},
    {ChildGrip::Left, -1, 0, Qt::SizeHorCursor},
    {ChildGrip::Right, 1, 0, Qt::SizeHorCursor},
    {ChildGrip::Top, 0, -1, Qt::SizeVerCursor},
    {ChildGrip::Bottom, 0, 1, Qt::SizeVerCursor},
}};

QPointF MiddleOf(const Handle& handle, const QRectF& frame) {
  return frame.center() +
         QPointF(handle.across * frame.width() / 2, handle.down * frame.height() / 2);
}

QRectF SquareAround(QPointF middle, double half) {
  return {middle - QPointF(half, half), middle + QPointF(half, half)};
}

const Handle* FindHandle(ChildGrip grip) {
  const auto found = std::find_if(kHandles.begin(), kHandles.end(),
                                  [&](const Handle& handle) { return handle.grip == grip; });
  return found == kHandles.end() ? nullptr : &*found;
}

/// Moves one side of a span by `way` pixels: the beginning (-1) or the end (1).
void DragSide(int side, int way, int& begin, int& length) {
  const int change = std::max(side * way, kSmallestChild - length);
  if (side < 0) begin -= change;
  length += change;
}

}  // namespace

ChildGrip GripAt(const QRectF& frame, QPointF place) {
  for (const Handle& handle : kHandles) {
    if (SquareAround(MiddleOf(handle, frame), kReach).contains(place)) return handle.grip;
  }
  return frame.contains(place) ? ChildGrip::Body : ChildGrip::None;
}

QCursor CursorOf(ChildGrip grip) {
  const Handle* handle = FindHandle(grip);
  return handle ? handle->cursor : Qt::SizeAllCursor;
}

void PaintHandle(QPainter& painter, QPointF middle) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::white);
  painter.setPen(QPen(kInk, 1));
  painter.drawRect(SquareAround(middle, kHandle / 2).adjusted(0, 0, -1, -1));
  painter.restore();
}

void PaintGrips(QPainter& painter, const QRectF& frame) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(kInk, 1));
  painter.drawRect(frame.adjusted(0, 0, -1, -1));
  painter.restore();
  for (const Handle& handle : kHandles) PaintHandle(painter, MiddleOf(handle, frame));
}

TxyChildGr::Place Dragged(TxyChildGr::Place place, ChildGrip grip, int right, int down) {
  if (grip == ChildGrip::Body) {
    place.left += right;
    place.top += down;
  }
  const Handle* handle = FindHandle(grip);
  if (handle && handle->across != 0) DragSide(handle->across, right, place.left, place.width);
  if (handle && handle->down != 0) DragSide(handle->down, down, place.top, place.height);
  return place;
}

}  // namespace tarnwick
