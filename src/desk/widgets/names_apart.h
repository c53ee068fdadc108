// Lists, fields and heads of tables whose long names are shortened to the room they have so that each can still be told from
// the others; the whole name is the tool tip. Know texts, not what they name.
#pragma once

#include <QComboBox>
#include <QHeaderView>

class QAbstractItemView;

namespace tarnwick {

/// Has the view draw its texts so.
void TellApart(QAbstractItemView& view);

/// A list that drops down.
class NameBox final : public QComboBox {
  Q_OBJECT

 public:
  explicit NameBox(QWidget* parent = nullptr);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

/// The head of a table's columns.
class NameHeader final : public QHeaderView {
  Q_OBJECT

 public:
  explicit NameHeader(QWidget* parent = nullptr);

 protected:
  void initStyleOptionForIndex(QStyleOptionHeader* option, int section) const override;
};

}  // namespace tarnwick
