#include "app/display/value_editor.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

#include "desk/widgets/checked_field.h"

namespace tarnwick {

ValueEditor::ValueEditor(const QString& name, const QString& units, double value, QWidget* parent)
    : QDialog(parent), value_(new NumberEdit(NumberEdit::Accepts::AnyNumber, this)) {
  setObjectName("ValueEditor");
  setWindowTitle(QString("%1 (%2) ").arg(name, units));
  value_->setObjectName("Value");
  value_->setMinimumWidth(220);
  value_->SetNumber(value);
  value_->selectAll();
  auto* const label = new QLabel(tr("&Value of %1:").arg(QString(name).replace("&", "&&")), this);
  label->setBuddy(value_);
  auto* const why = new QLabel(this);
  QPalette wrong = why->palette();
  wrong.setColor(QPalette::WindowText, WrongTextColor());
  why->setPalette(wrong);
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  auto* const column = new QVBoxLayout(this);
  column->addWidget(label);
  column->addWidget(value_);
  column->addWidget(why);
  column->addWidget(buttons);
  connect(value_, &QLineEdit::textChanged, why, [this, why] { why->setText(value_->toolTip()); });
  connect(buttons, &QDialogButtonBox::accepted, this, &ValueEditor::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
}

double ValueEditor::Value() const {
  return value_->Number().value_or(0);
}

void ValueEditor::accept() {
  if (value_->Number()) QDialog::accept();
}

}  // namespace tarnwick
