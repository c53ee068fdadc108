// A label that shortens its text to the room it has and shows the whole as its tool tip.
#pragma once

#include <QLabel>

namespace tarnwick {

class ElidedLabel final : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(Qt::Alignment alignment, QWidget* parent = nullptr);
  void ShowText(const QString& text);
  QSize minimumSizeHint() const override { return {0, QLabel::minimumSizeHint().height()}; }

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace tarnwick
