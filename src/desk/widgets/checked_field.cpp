#include "desk/widgets/checked_field.h"

#include <QPalette>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "desk/widgets/text.h"

namespace tarnwick {

QColor WrongColor() {
  return {255, 205, 205};
}

QColor WrongTextColor() {
  const bool dark = QPalette().color(QPalette::Window).lightness() < 128;
  return dark ? QColor(255, 140, 140) : QColor(176, 32, 32);
}

void MarkWrong(QWidget& field, const QString& why) {
  QPalette palette;  // the ordinary one
  if (!why.isEmpty()) {
    palette.setColor(QPalette::Base, WrongColor());
    palette.setColor(QPalette::Text, Qt::black);
  }
  field.setPalette(palette);
  field.setToolTip(why);
}

NumberEdit::NumberEdit(Accepts accepts, QWidget* parent) : QLineEdit(parent), accepts_(accepts) {
  connect(this, &QLineEdit::textChanged, this, &NumberEdit::Check);
}

void NumberEdit::SetNumber(double number) {
  setText(ToQt(ShortestText(number)));
  setCursorPosition(0);
}

std::optional<double> NumberEdit::Number() const {
  const std::optional<double> number = ParseNumber(text().toStdString());
  if (!number || !std::isfinite(*number)) return std::nullopt;
  if (accepts_ == Accepts::FromZero && *number < 0) return std::nullopt;
  if (accepts_ == Accepts::AboveZero && !(*number > 0)) return std::nullopt;
  return number;
}

QString NumberEdit::Trouble() const {
  if (Number()) return {};
  if (accepts_ == Accepts::FromZero) return tr("This is no number from 0 on.");
  return accepts_ == Accepts::AboveZero ? tr("This is no number above 0.")
                                        : tr("This is no number.");
}

void NumberEdit::Check() {
  const QString trouble = Trouble();
  if (!std::exchange(wrong_, !trouble.isEmpty())) tip_ = toolTip();
  MarkWrong(*this, trouble);
  if (!wrong_) setToolTip(tip_);
}

}  // namespace tarnwick
