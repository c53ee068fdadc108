#include "desk/fields/field_form.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>

#include "desk/fields/field_widget.h"
#include "desk/fields/mnemonics.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"

namespace tarnwick {
namespace {

constexpr int kWidestLabel = 130;  // pixels beside a control; a longer one stands above it

}  // namespace

FieldForm::FieldForm(const std::vector<FieldRow>& rows, const QString& taken, QWidget* parent)
    : QWidget(parent) {
  (new QVBoxLayout(this))->setContentsMargins(0, 0, 0, 0);
  Mnemonics mnemonics(taken);
  for (const FieldRow& row : rows) AddRow(row, mnemonics.Mark(ToQt(row.look.caption)));
  AlignLabels();
  static_cast<QVBoxLayout*>(layout())->addStretch();
}

/// The controls of all boxes begin at one line.
void FieldForm::AlignLabels() {
  int widest = 0;
  for (const QLabel* label : labels_) widest = std::max(widest, label->sizeHint().width());
  for (QLabel* label : labels_) label->setMinimumWidth(widest);
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

QLabel* FieldForm::AddLabelled(QFormLayout& form, const QString& caption, FieldWidget& field) {
  auto* label = new QLabel(caption, form.parentWidget());
  if (label->sizeHint().width() <= kWidestLabel) {
    labels_.push_back(label);
    form.addRow(label, &field);
  } else {
    delete label;
    label = new WrappedLabel(caption, form.parentWidget());
    form.addRow(label);
    form.addRow(&field);
  }
  label->setBuddy(field.Control());
  return label;
}

void FieldForm::AddRow(const FieldRow& row, const QString& caption) {
  FieldWidget* field = nullptr;
  QLabel* label = nullptr;
  if (row.look.control.kind != ControlKind::Hidden) {
    QFormLayout* form = BoxOf(row.look.group);
    field = MakeFieldWidget(row, form->parentWidget());
    if (field->NamesItself()) {
      field->SetCaption(caption);
      form->addRow(field);
    } else {
      label = AddLabelled(*form, caption, *field);
    }
    connect(field, &FieldWidget::edited, this,
            [this, place = fields_.size()] { emit edited(place); });
  }
  fields_.push_back(field);
  captions_.push_back(label);
}

void FieldForm::ShowOnly(const std::function<bool(std::size_t)>& wanted) {
  for (const auto& [group, form] : boxes_) form->parentWidget()->hide();
  for (std::size_t row = 0; row < fields_.size(); ++row) {
    if (fields_[row] == nullptr) continue;
    const bool shown = wanted(row);
    fields_[row]->setVisible(shown);
    if (captions_[row] != nullptr) captions_[row]->setVisible(shown);
    if (shown) fields_[row]->parentWidget()->show();
  }
}

}  // namespace tarnwick
