// Names to tick, and what makes the boxes of any list or table seen. Knows nothing of what the names stand for.
#pragma once

#include <QListWidget>

namespace tarnwick {

/// Gives the view a ground on which empty boxes are seen: on that of fields a dark desktop's lie dark on dark.
void ShowCheckBoxes(QAbstractItemView& view);

class CheckList final : public QListWidget {
 public:
  /// `name` of the object; `title` is what a screen reader calls it.
  CheckList(const QString& name, const QString& title, QWidget* parent = nullptr);

  QListWidgetItem* Add(const QString& text, Qt::CheckState state);
  /// Disabled ones count as not chosen.
  bool IsChosen(int row) const;
  QStringList Chosen() const;
};

}  // namespace tarnwick
