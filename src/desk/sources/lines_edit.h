// Where lines of numbers come from: a pipe, a socket, a serial port; and what X is. Knows places of lines; opens nothing.
#pragma once

#include "desk/sources/place_edit.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QSpinBox;

namespace tarnwick {

class LinesEdit final : public PlaceEdit {
  Q_OBJECT

 public:
  explicit LinesEdit(QWidget* parent);

  void Show(const TDSInfo& info) override;
  std::optional<QString> Take(TDSInfo& info) const override;

 private:
  void FollowWay();

  QComboBox* way_;
  QLabel* address_caption_;
  QLineEdit* address_;
  QLabel* number_caption_;
  QSpinBox* number_;  // port or speed
  QComboBox* x_;
};

}  // namespace tarnwick
