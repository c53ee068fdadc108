// A slider over the values that a parameter may take: between its bounds, else about the value it has. Knows numbers only.
#pragma once

#include <QSlider>

#include "fit/model/fit_settings.h"

namespace tarnwick {

class ValueSlider final : public QSlider {
  Q_OBJECT

 public:
  explicit ValueSlider(QWidget* parent = nullptr);

  /// Shows the parameter's value, of itself no move; while it is dragged its range stays.
  void Follow(const ParameterSettings& parameter);

 signals:
  /// Moved by the user.
  void dragged(double value);

 private:
  void FindRange();
  void Tell(int position);

  ParameterSettings parameter_;
  double lowest_ = -1;
  double highest_ = 1;
};

}  // namespace tarnwick
