// The controls of texts: lines, names of files and folders, formats of dates, and what is only shown.
#pragma once

#include <vector>

#include "desk/fields/field_widget.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace tarnwick {

class TextField final : public FieldWidget {
  Q_OBJECT

 public:
  TextField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QLineEdit* line_;
};

/// A box for each usual separator, and a line for others.
class SeparatorsField final : public FieldWidget {
  Q_OBJECT

 public:
  SeparatorsField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void TakeAll();

  std::vector<QCheckBox*> usual_;
  QLineEdit* others_;
};

/// The name of a column, with those that the source has.
class ColumnField final : public FieldWidget {
  Q_OBJECT

 public:
  ColumnField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QComboBox* list_;
};

/// A line with a button that looks for the file or folder.
class PathField final : public FieldWidget {
  Q_OBJECT

 public:
  PathField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void Browse();

  QLineEdit* line_;
};

/// A format, with those used most and what each makes of a moment.
class DateFormatField final : public FieldWidget {
  Q_OBJECT

 public:
  DateFormatField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QComboBox* list_;
};

/// What is set by other means, which its tool tip tells.
class ReadOnlyField final : public FieldWidget {
  Q_OBJECT

 public:
  ReadOnlyField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;

  QLabel* text_;
};

}  // namespace tarnwick
