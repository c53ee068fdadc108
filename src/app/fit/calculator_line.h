// A line that computes: an expression with the names of the model being edited, or that model's own at one X. Knows models.
#pragma once

#include <QWidget>

#include "fit/model/fit_settings.h"

class QLabel;
class QLineEdit;

namespace tarnwick {

class ElidedLabel;
class NumberEdit;

class CalculatorLine final : public QWidget {
  Q_OBJECT

 public:
  explicit CalculatorLine(QWidget* parent = nullptr);

  /// Computes with these names, and anew.
  void PutModel(const FitSettings& model);

 private:
  void Compute();

  FitSettings model_;
  QLineEdit* expression_;
  QLabel* at_;
  NumberEdit* x_;
  ElidedLabel* result_;
};

}  // namespace tarnwick
