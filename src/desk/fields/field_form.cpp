#include "desk/fields/field_form.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "desk/fields/field_widget.h"
#include "desk/fields/mnemonics.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kWidestLabel = 150;  // pixels beside a control; a longer one stands above it

void AddBeside(QFormLayout& form, QLabel& label, FieldWidget& field) {
  if (label.sizeHint().width() <= kWidestLabel) return form.addRow(&label, &field);
  label.setWordWrap(true);
  form.addRow(&label);
  form.addRow(&field);
}

}  // namespace

FieldForm::FieldForm(const std::vector<FieldRow>& rows, QWidget* parent) : QWidget(parent) {
  (new QVBoxLayout(this))->setContentsMargins(0, 0, 0, 0);
  Mnemonics mnemonics;
  for (const FieldRow& row : rows) AddRow(row, mnemonics.Mark(ToQt(row.look.caption)));
  static_cast<QVBoxLayout*>(layout())->addStretch();
}

QFormLayout* FieldForm::BoxOf(std::string_view group) {
  const auto found = std::ranges::find(boxes_, group, &decltype(boxes_)::value_type::first);
  if (found != boxes_.end()) return found->second;
  auto* box = new QGroupBox(ToQt(group), this);
  auto* form = new QFormLayout(box);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  layout()->addWidget(box);
  boxes_.emplace_back(group, form);
  return form;
}

void FieldForm::AddRow(const FieldRow& row, const QString& caption) {
  FieldWidget* field = nullptr;
  if (row.look.control.kind != ControlKind::Hidden) {
    QFormLayout* form = BoxOf(row.look.group);
    field = MakeFieldWidget(row, form->parentWidget());
    if (field->NamesItself()) {
      field->SetCaption(caption);
      form->addRow(field);
    } else {
      auto* label = new QLabel(caption, form->parentWidget());
      label->setBuddy(field->Control());
      AddBeside(*form, *label, *field);
    }
    connect(field, &FieldWidget::edited, this,
            [this, place = fields_.size()] { emit edited(place); });
  }
  fields_.push_back(field);
}

}  // namespace tarnwick
