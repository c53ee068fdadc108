// A page of controls made from rows of fields: a box for each group, in the order in which groups and rows come. Knows rows and
// controls, not what they belong to.
#pragma once

#include <QWidget>
#include <functional>
#include <vector>

#include "desk/fields/field_row.h"

class QFormLayout;
class QLabel;

namespace tarnwick {

class FieldWidget;

class FieldForm final : public QWidget {
  Q_OBJECT

 public:
  /// Those that are hidden have no control. `taken`: letters that buttons and tabs around the form answer to.
  explicit FieldForm(const std::vector<FieldRow>& rows, const QString& taken = {},
                     QWidget* parent = nullptr);

  std::size_t Size() const { return fields_.size(); }
  /// The control of a row by its place among them; null for a hidden one.
  FieldWidget* Field(std::size_t row) const { return fields_[row]; }
  /// Shows the rows, by their places, that `wanted` wants, and the boxes that hold any of them.
  void ShowOnly(const std::function<bool(std::size_t)>& wanted);

 signals:
  void edited(std::size_t row);

 private:
  QFormLayout* BoxOf(std::string_view group);
  void AddRow(const FieldRow& row, const QString& caption);
  QLabel* AddLabelled(QFormLayout& form, const QString& caption, FieldWidget& field);
  void AlignLabels();

  std::vector<FieldWidget*> fields_;
  std::vector<QLabel*> captions_;  // of the fields; null where they name themselves
  std::vector<QLabel*> labels_;    // those beside their controls
  std::vector<std::pair<std::string_view, QFormLayout*>> boxes_;
};

}  // namespace tarnwick
