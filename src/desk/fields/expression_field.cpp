#include "desk/fields/expression_field.h"

#include <QSignalBlocker>

#include "data/import/column_variables.h"
#include "desk/widgets/expression_edit.h"
#include "desk/widgets/text.h"

namespace tarnwick {

ExpressionField::ExpressionField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), edit_(new ExpressionEdit(1, this)) {
  edit_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  edit_->setLineWrapMode(QPlainTextEdit::NoWrap);
  AddControl(edit_);
  connect(edit_, &ExpressionEdit::textChanged, this, [this] { Take(edit_->Expression()); });
}

void ExpressionField::ShowValue(const std::optional<FieldValue>& value,
                                const FieldSurroundings& around) {
  QStringList names;
  const auto count = static_cast<std::int32_t>(around.columns.size());
  for (std::int32_t column = 0; column < count; ++column) {
    names << ToQt(VariableOfColumn(around.columns, column));
  }
  if (!names.isEmpty())
    names << "x"
          << "y";
  edit_->SetNames(names);
  edit_->setPlaceholderText(value ? QString() : tr("various"));
  const auto* const text = value ? std::get_if<std::string>(&*value) : nullptr;
  {
    const QSignalBlocker blocker(edit_);
    edit_->SetExpression(text != nullptr ? *text : std::string());
  }
  edit_->ShowTrouble({});  // which colours it
}

void ExpressionField::ShowPlace(const FieldRemark& remark) {
  edit_->ShowTrouble(remark.Refuses() ? remark.text : std::string(), remark.place);
}

}  // namespace tarnwick
