// A histogram as a small graph, drawn as graphs are. Knows counts and how graphs are painted; no DataSet.
#pragma once

#include <QWidget>

#include "analysis/histogram.h"
#include "graph/xy_graph.h"

namespace tarnwick {

class HistogramView final : public QWidget {
  Q_OBJECT

 public:
  /// Whether the values are dates and times.
  enum class Values { Numbers, Moments };

  explicit HistogramView(QWidget* parent);

  /// `title` stands below the values' axis.
  void Show(const Histogram& histogram, const QString& title, Values values);
  QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void TakeColors();

  TxyGraph graph_;
};

}  // namespace tarnwick
