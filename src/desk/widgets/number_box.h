// A number in a box with arrows, written as files write it: a point before its decimals and nothing between its thousands,
// wherever the program runs. A comma that is typed is taken for the point.
#pragma once

#include <QDoubleSpinBox>

namespace tarnwick {

class NumberBox final : public QDoubleSpinBox {
  Q_OBJECT

 public:
  explicit NumberBox(QWidget* parent = nullptr);

 protected:
  QValidator::State validate(QString& text, int& place) const override;
};

}  // namespace tarnwick
