#include "desk/fields/field_widget.h"

#include <QVBoxLayout>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "desk/fields/choice_field.h"
#include "desk/fields/color_field.h"
#include "desk/fields/expression_field.h"
#include "desk/fields/font_field.h"
#include "desk/fields/number_field.h"
#include "desk/fields/text_field.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"
#include "desk/widgets/wrapped_label.h"

namespace tarnwick {
namespace {

/// "0 to 1000 px", as far as the row has limits.
QString LimitsText(const FieldControl& control) {
  if (control.kind != ControlKind::Number && control.kind != ControlKind::Integer) return {};
  constexpr double kNoLimit = 2147483647;
  if (!(std::abs(control.min) < kNoLimit && std::abs(control.max) < kNoLimit)) return {};
  return ToQt(ShortestText(control.min) + " to " + ShortestText(control.max) + " " +
              std::string(control.unit))
      .trimmed();
}

QString TipOf(const FieldRow& row) {
  const QString limits = LimitsText(row.look.control);
  const QString caption = ToQt(row.look.caption);
  return limits.isEmpty() ? caption : caption + ": " + limits;
}

bool Same(const std::optional<FieldValue>& one, const std::optional<FieldValue>& other) {
  if (!one || !other) return !one && !other;
  return one->index() == other->index() && SameValue(*one, *other);
}

}  // namespace

FieldWidget::FieldWidget(const FieldRow& row, QWidget* parent)
    : QWidget(parent), row_(row), column_(new QVBoxLayout(this)), tip_(TipOf(row)) {
  setObjectName(ToQt(row.look.group) + "/" + ToQt(row.look.caption));
  column_->setContentsMargins(0, 0, 0, 0);
  column_->setSpacing(2);
}

void FieldWidget::AddControl(QWidget* control, QWidget* keys) {
  column_->addWidget(control);
  control_ = keys ? keys : control;
  control_->setAccessibleName(ToQt(row_.look.caption));
  control_->setAccessibleDescription(ToQt(row_.look.group));
  control_->setToolTip(tip_);
  setFocusProxy(control_);
}

bool FieldWidget::LooksTheSame(const FieldSurroundings& around) const {
  const ControlKind kind = row_.look.control.kind;
  if (kind == ControlKind::Moment) return around.moments == around_.moments;
  if (kind == ControlKind::Column || kind == ControlKind::Expression)
    return around.columns == around_.columns;
  return kind != ControlKind::DataSet || around.data_sets == around_.data_sets;
}

void FieldWidget::Show(const std::optional<FieldValue>& value, const FieldSurroundings& around) {
  const bool same = is_shown_ && LooksTheSame(around);
  const bool stays = same && Same(value, shown_) && IsRefused();
  const bool means_it = same && typed_ && Same(value, typed_);
  around_ = around;
  shown_ = value;
  is_shown_ = true;
  if (stays) return;
  if (IsRefused()) ShowRemark({});
  if (means_it) return;
  typed_ = value;
  ShowValue(value, around_);
}

void FieldWidget::Forget() {
  is_shown_ = false;
  typed_.reset();
  ShowRemark({});
}

void FieldWidget::Take(FieldValue value) {
  typed_ = std::move(value);
  emit edited();
}

void FieldWidget::Refuse(const QString& why) {
  typed_.reset();
  ShowRemark(FieldRemark::Refused(why.toStdString()));
  emit edited();
}

void FieldWidget::ShowRemark(const FieldRemark& remark) {
  remark_kind_ = remark.kind;
  MarkWrong(*control_, remark.Refuses() ? ToQt(remark.text) : QString());
  ShowPlace(remark);
  control_->setToolTip(remark.text.empty() ? tip_ : ToQt(remark.text));
  if (!remark_ && remark.text.empty()) return;
  if (!remark_) {
    remark_ = SentencesLabel(this);
    remark_->setObjectName("Remark");
    column_->addWidget(remark_);
  }
  QPalette colors;
  if (remark.Refuses()) colors.setColor(QPalette::WindowText, WrongTextColor());
  remark_->setPalette(colors);
  remark_->ShowText(ToQt(remark.text));
  remark_->setVisible(!remark.text.empty());
}

void FieldWidget::SetIdle(const QString& why) {
  control_->setEnabled(why.isEmpty());
  if (!IsRefused()) control_->setToolTip(why.isEmpty() ? tip_ : why);
}

FieldWidget* MakeFieldWidget(const FieldRow& row, QWidget* parent) {
  switch (row.look.control.kind) {
    case ControlKind::CheckBox:
      return new CheckField(row, parent);
    case ControlKind::Number:
    case ControlKind::Moment:
      return new NumberField(row, parent);
    case ControlKind::Integer:
      return new IntegerField(row, parent);
    case ControlKind::Text:
      return new TextField(row, parent);
    case ControlKind::Expression:
      return new ExpressionField(row, parent);
    case ControlKind::Separators:
      return new SeparatorsField(row, parent);
    case ControlKind::Column:
      return new ColumnField(row, parent);
    case ControlKind::DateFormat:
      return new DateFormatField(row, parent);
    case ControlKind::File:
    case ControlKind::Folder:
      return new PathField(row, parent);
    case ControlKind::Color:
      return new ColorField(row, parent);
    case ControlKind::Font:
      return new FontField(row, parent);
    case ControlKind::Choice:
    case ControlKind::LineStyle:
    case ControlKind::Symbol:
      return new ChoiceField(row, parent);
    case ControlKind::DataSet:
      return new DataSetField(row, parent);
    case ControlKind::ReadOnly:
      return new ReadOnlyField(row, parent);
    case ControlKind::Hidden:
      break;
  }
  return nullptr;
}

}  // namespace tarnwick
