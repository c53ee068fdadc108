#include "desk/widgets/number_box.h"

namespace tarnwick {

NumberBox::NumberBox(QWidget* parent) : QDoubleSpinBox(parent) {
  setLocale(QLocale::c());
  setGroupSeparatorShown(false);
}

QValidator::State NumberBox::validate(QString& text, int& place) const {
  text.replace(',', '.');
  return QDoubleSpinBox::validate(text, place);
}

}  // namespace tarnwick
