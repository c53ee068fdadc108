// A small picture of the graph, so that the curve is seen while a window over it is worked in. Knows a size; what is drawn is
// decided by whoever draws.
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>

#include "graph/pictures/picture_export.h"

namespace tarnwick {

/// Draws a picture of that size.
using DrawPicture = std::function<QImage(const PictureOptions&)>;

class CurvePreview final : public QWidget {
  Q_OBJECT

 public:
  explicit CurvePreview(DrawPicture draw, QWidget* parent = nullptr);

  QSize sizeHint() const override { return {320, 240}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  DrawPicture draw_;
};

}  // namespace tarnwick
