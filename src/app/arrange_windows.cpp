#include "app/arrange_windows.h"

#include <QMdiArea>
#include <QMdiSubWindow>
#include <cmath>

namespace tarnwick {
namespace {

constexpr int kMostStrips = 4;

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

void Tile(QMdiArea& area, Qt::Orientation strips) {
  const QList<QMdiSubWindow*> windows = OpenWindows(area);
  if (windows.isEmpty()) return;
  const int count = static_cast<int>(windows.size());
  const int along = count <= kMostStrips ? count : static_cast<int>(std::ceil(std::sqrt(count)));
  const int across = (count + along - 1) / along;
  const int columns = strips == Qt::Horizontal ? across : along;
  const int rows = strips == Qt::Horizontal ? along : across;
  const QSize room = area.viewport()->size();
  for (int i = 0; i < count; ++i) {
    const int row = i / columns;
    const int column = i % columns;
    const int left = room.width() * column / columns;
    const int top = room.height() * row / rows;
    windows[i]->showNormal();
    windows[i]->setGeometry(left, top, room.width() * (column + 1) / columns - left,
                            room.height() * (row + 1) / rows - top);
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

}  // namespace

void ArrangeWindows(QMdiArea& area, WindowArrangement arrangement) {
  switch (arrangement) {
    case WindowArrangement::Cascade:
      area.cascadeSubWindows();
      break;
    case WindowArrangement::TileHorizontally:
      Tile(area, Qt::Horizontal);
      break;
    case WindowArrangement::TileVertically:
      Tile(area, Qt::Vertical);
      break;
    case WindowArrangement::MinimizeAll:
      for (QMdiSubWindow* window : OpenWindows(area)) window->showMinimized();
      LineUpIcons(area);
      break;
    case WindowArrangement::ArrangeIcons:
      LineUpIcons(area);
      break;
  }
}

}  // namespace tarnwick
