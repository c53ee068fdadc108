// The figures of the DataSet's X and Y and how often which values come. Knows what is computed of a DataSet; changes nothing.
#pragma once

#include <QWidget>

#include "analysis/histogram.h"
#include "data/points/point_chain.h"
#include "editors/data/edited_series.h"

class QComboBox;
class QSpinBox;
class QTableWidget;

namespace tarnwick {

class HistogramView;
class WrappedLabel;

class StatisticsPage final : public QWidget {
  Q_OBJECT

 public:
  StatisticsPage(const EditedSeries& series, QWidget* parent);

  void Refresh();

 private:
  QWidget* BuildChoice();
  void ShowFigures(const TSeries& series);
  void ShowHistogram();
  void Copy() const;

  const EditedSeries& series_;
  PointChain shown_;  // the points whose figures stand there
  Histogram histogram_;
  WrappedLabel* some_rows_;  // of the source are counted
  QTableWidget* table_;
  QComboBox* of_ = nullptr;
  QSpinBox* bins_ = nullptr;
  HistogramView* view_;
};

}  // namespace tarnwick
