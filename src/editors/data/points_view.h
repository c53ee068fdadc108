// A table over a DataSet's points that costs what it shows: its scroll bar moves a window over them. Knows its model; what
// is done
// with the marked rows is its owner's.
#pragma once

#include <QKeySequence>
#include <QTableView>
#include <QWidget>
#include <cstddef>
#include <optional>
#include <utility>

class QKeyEvent;
class QScrollBar;

namespace tarnwick {

class PointsModel;

class PointsView final : public QWidget {
  Q_OBJECT

 public:
  PointsView(PointsModel& model, QWidget* parent);

  /// The model's points are other ones.
  void PointsChanged();
  /// Brings a point into sight and marks it alone.
  void GoTo(std::size_t point);
  /// The first and the last of the marked points; nothing for none.
  std::optional<std::pair<std::size_t, std::size_t>> Marked() const;

 signals:
  void markedChanged();
  /// One of the keys for deleting, copying and pasting.
  void keyPressed(QKeySequence::StandardKey key);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  int RowsInSight() const;
  void ShowFrom(std::size_t first);
  void Resized();
  void MoveTo(std::size_t point, Qt::KeyboardModifiers modifiers);
  bool TakeKey(int key, Qt::KeyboardModifiers modifiers);
  bool TakeEditKey(QKeyEvent& event);
  void ShowMark();

  PointsModel& model_;
  QTableView* table_;
  QScrollBar* bar_;
  std::size_t anchor_ = 0;   // of the marked range
  std::size_t current_ = 0;  // its other end
  bool is_marked_ = false;
};

}  // namespace tarnwick
