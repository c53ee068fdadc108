#include "desk/widgets/check_list.h"

#include "desk/widgets/names_apart.h"

namespace tarnwick {

void ShowCheckBoxes(QAbstractItemView& view) {
  const QPalette& palette = view.palette();
  const bool dark =
      palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
  if (dark) view.viewport()->setBackgroundRole(QPalette::Button);
}

CheckList::CheckList(const QString& name, const QString& title, QWidget* parent)
    : QListWidget(parent) {
  setObjectName(name);
  setAccessibleName(title);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  TellApart(*this);
  ShowCheckBoxes(*this);
}

QListWidgetItem* CheckList::Add(const QString& text, Qt::CheckState state) {
  auto* item = new QListWidgetItem(text, this);
  item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
  item->setToolTip(text);
  item->setCheckState(state);
  return item;
}

bool CheckList::IsChosen(int row) const {
  const QListWidgetItem& one = *item(row);
  return one.flags().testFlag(Qt::ItemIsEnabled) && one.checkState() == Qt::Checked;
}

QStringList CheckList::Chosen() const {
  QStringList names;
  for (int row = 0; row < count(); ++row) {
    if (IsChosen(row)) names.append(item(row)->text());
  }
  return names;
}

}  // namespace tarnwick
