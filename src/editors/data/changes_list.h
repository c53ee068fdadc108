// What became of a DataSet's points since they were read, and the wish to have them back. Knows changes; edits nothing.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "data/points/point_changes.h"
#include "desk/document/points_as_read.h"

class QLabel;
class QPushButton;
class QTableWidget;

namespace tarnwick {

class ChangesList final : public QWidget {
  Q_OBJECT

 public:
  explicit ChangesList(QWidget* parent);

  /// Shows what differs from what was read (null: nothing is known of that), and itself only where something does. `text`
  /// writes a point as its X and Y.
  void Show(const PointChain& now, const SeriesAsRead* as_read,
            const std::function<QString(const Point&)>& text);
  /// Those of the rows that are marked.
  std::vector<PointChange> Chosen() const;

 signals:
  void putBackWanted();
  void putAllBackWanted();
  /// A point that is there is to be shown.
  void pointChosen(const tarnwick::Point& point);

 private:
  void Fill(const std::function<QString(const Point&)>& text);
  QString Summary() const;
  void ChosenChanged();

  PointChain now_;  // what is listed is of these
  PointChain was_;
  std::optional<std::vector<PointChange>> changes_ = std::vector<PointChange>();
  QLabel* told_;
  QTableWidget* table_;
  QPushButton* back_;
};

}  // namespace tarnwick
