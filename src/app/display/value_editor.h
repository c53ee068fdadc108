// Asks for the value of one parameter.
#pragma once

#include <QDialog>

namespace tarnwick {

class NumberEdit;

class ValueEditor final : public QDialog {
  Q_OBJECT

 public:
  /// For the parameter of that name and those units.
  ValueEditor(const QString& name, const QString& units, double value, QWidget* parent);
  /// The number entered, once accepted.
  double Value() const;
  /// Does nothing while the text is no number.
  void accept() override;

 private:
  NumberEdit* value_;
};

}  // namespace tarnwick
