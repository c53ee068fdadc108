// The controls of what is one of a few: check boxes, lists of choices, line styles, symbols, DataSets.
#pragma once

#include "desk/fields/field_widget.h"

class QCheckBox;
class QComboBox;

namespace tarnwick {

/// A boolean, or an integer that is 0 or not. Several that differ are half checked.
class CheckField final : public FieldWidget {
  Q_OBJECT

 public:
  CheckField(const FieldRow& row, QWidget* parent);
  bool NamesItself() const override { return true; }
  void SetCaption(const QString& caption) override;

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QCheckBox* box_;
  bool as_integer_ = false;
};

/// One of the row's choices, with a sample where they can be drawn.
class ChoiceField final : public FieldWidget {
  Q_OBJECT

 public:
  ChoiceField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QComboBox* list_;
};

/// The index of a DataSet; -1 none.
class DataSetField final : public FieldWidget {
  Q_OBJECT

 public:
  DataSetField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QComboBox* list_;
};

}  // namespace tarnwick
