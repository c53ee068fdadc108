#include "desk/widgets/screen_room.h"

#include <QDialog>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QVBoxLayout>

namespace tarnwick {
namespace {

bool Fits(QSize size, QSize room) {
  return size.width() <= room.width() && size.height() <= room.height();
}

void LetScroll(QVBoxLayout& column) {
  auto* const area = new QScrollArea;
  auto* const page = new QWidget;
  auto* const inner = new QVBoxLayout(page);
  inner->setContentsMargins(0, 0, 0, 0);
  while (column.count() > 1) {
    const int stretch = column.stretch(0);
    QLayoutItem* const item = column.takeAt(0);
    if (QLayout* const layout = item->layout()) {
      layout->setParent(nullptr);
      inner->addLayout(layout, stretch);
    } else if (QWidget* const widget = item->widget()) {
      inner->addWidget(widget, stretch, item->alignment());
      delete item;
    } else {
      inner->addItem(item);
    }
  }
  area->setObjectName("DialogScroll");
  area->setFrameShape(QFrame::NoFrame);
  area->setWidgetResizable(true);
  area->setWidget(page);
  column.insertWidget(0, area, 1);
}

}  // namespace

void FitScreen(QDialog& dialog) {
  const QRect available = dialog.screen()->availableGeometry();
  const int title = dialog.style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &dialog);
  const QSize room = available.size() - QSize(0, title);
  auto* const column = qobject_cast<QVBoxLayout*>(dialog.layout());
  if (column != nullptr && column->count() > 1 && !Fits(column->totalMinimumSize(), room)) {
    LetScroll(*column);
  }
  if (Fits(dialog.size(), room)) return;
  dialog.setMinimumSize(dialog.minimumSize().boundedTo(room));
  dialog.resize(dialog.size().boundedTo(room));
  dialog.move(available.topLeft());
}

}  // namespace tarnwick
