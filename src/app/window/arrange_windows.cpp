#include "app/window/arrange_windows.h"

#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QStyle>
#include <algorithm>
#include <cmath>

namespace tarnwick {
namespace {

constexpr int kMostStrips = 4;
constexpr double kCascadeShare = 0.7;

QList<QMdiSubWindow*> OpenWindows(QMdiArea& area) {
  QList<QMdiSubWindow*> open;
  for (QMdiSubWindow* window : area.subWindowList()) {
    if (!window->isMinimized() && !window->isHidden()) open.append(window);
  }
  return open;
}

QList<QMdiSubWindow*> Icons(QMdiArea& area) {
  QList<QMdiSubWindow*> icons;
  for (QMdiSubWindow* window : area.subWindowList()) {
    if (window->isMinimized()) icons.append(window);
  }
  return icons;
}

/// Up to `most_strips` windows are strips, more a grid.
void Tile(QMdiArea& area, Qt::Orientation strips, int most_strips) {
  const QList<QMdiSubWindow*> windows = OpenWindows(area);
  if (windows.isEmpty()) return;
  const int count = static_cast<int>(windows.size());
  const int along = count <= most_strips ? count : static_cast<int>(std::ceil(std::sqrt(count)));
  const int across = (count + along - 1) / along;
  const int columns = strips == Qt::Horizontal ? across : along;
  const int rows = strips == Qt::Horizontal ? along : across;
  const QSize room = area.viewport()->size();
  for (int i = 0; i < count; ++i) {
    const int row = i / columns;
    const int column = i % columns;
    const int beside = std::min(columns, count - row * columns);  // the last row may hold fewer
    const int left = room.width() * column / beside;
    const int top = room.height() * row / rows;
    windows[i]->showNormal();
    windows[i]->setGeometry(left, top, room.width() * (column + 1) / beside - left,
                            room.height() * (row + 1) / rows - top);
  }
}

/// Windows of most of the room, each a title bar further down and right; a new pile begins where the room ends.
void Cascade(QMdiArea& area) {
  const QSize room = area.viewport()->size();
  const QSize size = room * kCascadeShare;
  const int step = area.style()->pixelMetric(QStyle::PM_TitleBarHeight);
  const int pile =
      std::max(1, std::min(room.width() - size.width(), room.height() - size.height()) / step + 1);
  const QList<QMdiSubWindow*> windows = OpenWindows(area);
  for (int i = 0; i < windows.size(); ++i) {
    const int shift = step * (i % pile);
    windows[i]->showNormal();
    windows[i]->setGeometry({{shift, shift}, size});
    windows[i]->raise();
  }
}

void LineUpIcons(QMdiArea& area) {
  int left = 0;
  int bottom = area.viewport()->height();
  for (QMdiSubWindow* icon : Icons(area)) {
    if (left > 0 && left + icon->width() > area.viewport()->width()) {
      left = 0;
      bottom -= icon->height();
    }
    icon->move(left, bottom - icon->height());
    left += icon->width();
  }
}

void MinimizeAll(QMdiArea& area) {
  const QList<QMdiSubWindow*> windows = OpenWindows(area);
  // A maximised window hands its state on to the next one when it is minimised, so all become normal first.
  for (QMdiSubWindow* window : windows) window->showNormal();
  for (QMdiSubWindow* window : windows) window->showMinimized();
  LineUpIcons(area);
}

}  // namespace

void ArrangeWindows(QMdiArea& area, WindowArrangement arrangement) {
  switch (arrangement) {
    case WindowArrangement::Cascade:
      Cascade(area);
      break;
    case WindowArrangement::TileHorizontally:
      Tile(area, Qt::Horizontal, kMostStrips);
      break;
    case WindowArrangement::TileVertically:
      Tile(area, Qt::Vertical, kMostStrips);
      break;
    case WindowArrangement::Grid:
      Tile(area, Qt::Horizontal, 2);
      break;
    case WindowArrangement::MinimizeAll:
      MinimizeAll(area);
      break;
    case WindowArrangement::ArrangeIcons:
      LineUpIcons(area);
      break;
  }
}

KeptArrangement::KeptArrangement(QMdiArea& area) : QObject(&area), area_(area) {
  area.viewport()->installEventFilter(this);
}

void KeptArrangement::Arrange(WindowArrangement arrangement) {
  ArrangeWindows(area_, arrangement);
  arrangement_ = arrangement;
  places_ = Places();
}

QList<QRect> KeptArrangement::Places() const {
  QList<QRect> places;
  for (const QMdiSubWindow* window : area_.subWindowList())
    places.append(window->isMaximized() ? QRect() : window->geometry());
  return places;
}

bool KeptArrangement::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize && arrangement_) {
    if (Places() == places_) {
      Arrange(*arrangement_);
    } else {
      arrangement_.reset();
    }
  }
  return false;
}

}  // namespace tarnwick
