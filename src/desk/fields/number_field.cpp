#include "desk/fields/number_field.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QSpinBox>
#include <algorithm>
#include <cmath>

#include "base/day_number.h"
#include "base/number_text.h"
#include "desk/fields/wheel_guard.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kShortest = 90;  // pixels of a control

}  // namespace

NumberField::NumberField(const FieldRow& row, QWidget* parent) : FieldWidget(row, parent) {
  auto* holder = new QWidget(this);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  line_ = new QLineEdit(holder);
  line_->setMinimumWidth(kShortest);
  line->addWidget(line_);
  if (!row.look.control.unit.empty()) {
    line->addWidget(new QLabel(ToQt(row.look.control.unit), holder));
  }
  AddControl(holder, line_);
  connect(line_, &QLineEdit::textEdited, this, &NumberField::TakeText);
}

void NumberField::ShowValue(const std::optional<FieldValue>& value,
                            const FieldSurroundings& around) {
  moments_ = around.moments && Row().look.control.kind == ControlKind::Moment;
  line_->setPlaceholderText(value ? QString() : tr("various"));
  const auto* number = value ? std::get_if<double>(&*value) : nullptr;
  line_->setText(!number ? QString()
                         : ToQt(moments_ ? MomentText(*number) : ShortestText(*number)));
  line_->setCursorPosition(0);
}

void NumberField::TakeText(const QString& text) {
  const std::string typed = text.toStdString();
  std::optional<double> number = ParseNumber(typed);
  if (!number && moments_) number = ParseDay(typed);
  if (!number || !std::isfinite(*number)) {
    return Refuse(moments_ ? tr("This is neither a date, 2024-04-03 12:30, nor a number.")
                           : tr("This is no number."));
  }
  const FieldControl& control = Row().look.control;
  if (*number < control.min || *number > control.max) {
    return Refuse(
        tr("From %1 to %2.").arg(ToQt(ShortestText(control.min)), ToQt(ShortestText(control.max))));
  }
  Take(*number);
}

IntegerField::IntegerField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), box_(new QSpinBox(this)) {
  box_->setLocale(QLocale::c());
  box_->setGroupSeparatorShown(false);
  box_->setKeyboardTracking(true);
  if (!row.look.control.unit.empty()) box_->setSuffix(" " + ToQt(row.look.control.unit));
  box_->setMinimumWidth(kShortest);  // not that of the largest number it may hold
  LeaveWheelAlone(*box_);
  AddControl(box_);
  connect(box_, &QSpinBox::valueChanged, this, [this](int value) { Take(value); });
}

void IntegerField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  const QSignalBlocker blocker(box_);
  const FieldControl& control = Row().look.control;
  const auto* number = value ? std::get_if<std::int32_t>(&*value) : nullptr;
  const int shown = number ? *number : static_cast<int>(std::max(control.min, 0.0));
  // What is stored is shown, wherever it came from.
  box_->setRange(std::min(static_cast<int>(control.min), shown),
                 std::max(static_cast<int>(control.max), shown));
  box_->setValue(shown);
}

}  // namespace tarnwick
