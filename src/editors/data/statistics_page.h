// The figures of the DataSet's X and Y. Knows what is computed of a DataSet; changes nothing.
#pragma once

#include <QWidget>

#include "data/points/point_chain.h"
#include "editors/data/edited_series.h"

class QPushButton;
class QTableWidget;

namespace tarnwick {

class StatisticsPage final : public QWidget {
  Q_OBJECT

 public:
  StatisticsPage(const EditedSeries& series, QWidget* parent);

  void Refresh();

 private:
  void Copy() const;

  const EditedSeries& series_;
  PointChain shown_;  // the points whose figures stand there
  QTableWidget* table_;
};

}  // namespace tarnwick
