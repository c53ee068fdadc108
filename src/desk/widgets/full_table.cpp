#include "desk/widgets/full_table.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QStyle>

namespace tarnwick {
namespace {

constexpr int kNarrowestColumn = 36;

}  // namespace

FullTable::FullTable(const QString& name, Width width, QWidget* parent)
    : QTableWidget(parent), width_(width) {
  setAccessibleName(name);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  verticalHeader()->hide();
  horizontalHeader()->setHighlightSections(false);
  horizontalHeader()->setMinimumSectionSize(kNarrowestColumn);
  setAlternatingRowColors(true);
  setTabKeyNavigation(false);
}

QTableWidgetItem* FullTable::Put(int row, int column, const QString& text,
                                 Qt::Alignment alignment) {
  auto* item = new QTableWidgetItem(text);
  item->setTextAlignment(alignment | Qt::AlignVCenter);
  setItem(row, column, item);
  return item;
}

void FullTable::FitContents() {
  if (columnCount() == 0) return;
  resizeColumnsToContents();
  resizeRowsToContents();
  const QHeaderView& header = *horizontalHeader();
  const int room = width() - 2 * frameWidth();
  int last = columnCount() - 1;
  while (last > 0 && isColumnHidden(last)) --last;
  if (width_ == Width::Whole && header.length() < room) {
    setColumnWidth(last, columnWidth(last) + room - header.length());
  }
  int height = 2 * frameWidth() + verticalHeader()->length();
  if (!header.isHidden()) height += header.sizeHint().height();
  if (header.length() > room) height += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  setFixedHeight(height);
}

void FullTable::resizeEvent(QResizeEvent* event) {
  QTableWidget::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) FitContents();
}

}  // namespace tarnwick
