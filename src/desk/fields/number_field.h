// The controls of numbers: real ones and moments as a line, whole ones with steps. Numbers are written as files write them.
#pragma once

#include "desk/fields/field_widget.h"

class QLineEdit;
class QSpinBox;

namespace tarnwick {

/// A real number, with its unit behind it. Where values are moments a date and time may be typed as well.
class NumberField final : public FieldWidget {
  Q_OBJECT

 public:
  NumberField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void TakeText(const QString& text);

  QLineEdit* line_;
  bool moments_ = false;
};

class IntegerField final : public FieldWidget {
  Q_OBJECT

 public:
  IntegerField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QSpinBox* box_;
};

}  // namespace tarnwick
