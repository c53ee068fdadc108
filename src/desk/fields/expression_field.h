// The control of an expression: colours, completion of names and columns, the place of trouble underlined. Knows how it is
// written; whether it is good is its owner's to say.
#pragma once

#include "desk/fields/field_widget.h"

namespace tarnwick {

class ExpressionEdit;

class ExpressionField final : public FieldWidget {
  Q_OBJECT

 public:
  ExpressionField(const FieldRow& row, QWidget* parent);

 private:
  void ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings& around) override;
  void ShowPlace(const FieldRemark& remark) override;

  ExpressionEdit* edit_;
};

}  // namespace tarnwick
