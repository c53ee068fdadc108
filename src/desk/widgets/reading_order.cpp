#include "desk/widgets/reading_order.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QScrollArea>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <algorithm>
#include <utility>
#include <vector>

namespace tarnwick {
namespace {

using Controls = std::vector<QWidget*>;

void AddWidget(QWidget* widget, Controls& controls);

/// Row and column of an item where the layout has them.
std::pair<int, int> PlaceOf(const QLayout& layout, int item) {
  if (const auto* grid = qobject_cast<const QGridLayout*>(&layout)) {
    int row = 0, column = 0, rows = 0, columns = 0;
    grid->getItemPosition(item, &row, &column, &rows, &columns);
    return {row, column};
  }
  if (const auto* form = qobject_cast<const QFormLayout*>(&layout)) {
    int row = 0;
    QFormLayout::ItemRole role = QFormLayout::LabelRole;
    form->getItemPosition(item, &row, &role);
    return {row, role};
  }
  return {item, 0};
}

void AddLayout(const QLayout& layout, Controls& controls) {
  std::vector<int> items;
  items.reserve(static_cast<std::size_t>(layout.count()));
  for (int i = 0; i < layout.count(); ++i) items.push_back(i);
  std::ranges::sort(items, {}, [&](int item) { return PlaceOf(layout, item); });
  for (const int i : items) {
    QLayoutItem* const item = layout.itemAt(i);
    if (const QLayout* inner = item->layout()) {
      AddLayout(*inner, controls);
    } else if (item->widget()) {
      AddWidget(item->widget(), controls);
    }
  }
}

void AddWidget(QWidget* widget, Controls& controls) {
  if ((widget->focusPolicy() & Qt::TabFocus) != 0) controls.push_back(widget);
  if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
    controls.push_back(tabs->tabBar());
    for (int i = 0; i < tabs->count(); ++i) AddWidget(tabs->widget(i), controls);
  } else if (auto* scroll = qobject_cast<QScrollArea*>(widget)) {
    if (scroll->widget()) AddWidget(scroll->widget(), controls);
  } else if (auto* splitter = qobject_cast<QSplitter*>(widget)) {
    for (int i = 0; i < splitter->count(); ++i) AddWidget(splitter->widget(i), controls);
  } else if (widget->layout()) {
    AddLayout(*widget->layout(), controls);
  }
}

}  // namespace

void TabInReadingOrder(QWidget& page) {
  Controls controls;
  AddWidget(&page, controls);
  for (std::size_t i = 1; i < controls.size(); ++i)
    QWidget::setTabOrder(controls[i - 1], controls[i]);
}

}  // namespace tarnwick
