// The boxes and histograms of two DataSets, drawn as graphs are. Knows a graph of its own; no document.
#pragma once

#include <QWidget>

#include "graph/xy_graph.h"

namespace tarnwick {

class TextMetrics;

class SamplePicture final : public QWidget {
  Q_OBJECT

 public:
  explicit SamplePicture(QWidget* parent = nullptr);
  /// Throws Error as DrawSamples.
  void Show(const TSeries& first, const TSeries& second);
  void Clear();
  QSize sizeHint() const override { return {380, 260}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void MakeRoomForLegend(const TextMetrics& metrics);

  TxyGraph graph_;
};

}  // namespace tarnwick
