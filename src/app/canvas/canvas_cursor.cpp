#include "app/canvas/canvas_cursor.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPixmap>
#include <QPoint>
#include <QScreen>
#include <QSvgRenderer>

// Resources of a static library join the program only when asked for, outside of any namespace.
static void LoadCursorResources() {
  Q_INIT_RESOURCE(cursors);
}

namespace tarnwick {
namespace {

constexpr int kSide = 32;

struct Drawing {
  const char* name;
  QPoint hot_spot;
};

Drawing DrawingOf(CanvasCursor cursor) {
  switch (cursor) {
    case CanvasCursor::UpArrow:
      return {"UPARROW", {16, 4}};
    case CanvasCursor::DownArrow:
      return {"DOWNARROW", {16, 27}};
    case CanvasCursor::Pen:
      return {"PEN", {4, 27}};
    case CanvasCursor::PointDel:
      return {"POINTDEL", {10, 10}};
    case CanvasCursor::MarkBox:
      return {"MARKBOX", {16, 16}};
    case CanvasCursor::Zoom:
      return {"ZOOM", {13, 13}};
  }
  return {"UPARROW", {}};
}

}  // namespace

QCursor DrawnCursor(CanvasCursor cursor) {
  LoadCursorResources();
  const Drawing drawing = DrawingOf(cursor);
  const QScreen* screen = QGuiApplication::primaryScreen();
  const double ratio = screen ? screen->devicePixelRatio() : 1;
  QPixmap pixmap((QSizeF(kSide, kSide) * ratio).toSize());
  pixmap.setDevicePixelRatio(ratio);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  QSvgRenderer(QStringLiteral(":/cursors/") + drawing.name)
      .render(&painter, QRectF(0, 0, kSide, kSide));
  painter.end();
  return QCursor(pixmap, drawing.hot_spot.x(), drawing.hot_spot.y());
}

}  // namespace tarnwick
