#include "app/fit/calculator_line.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "app/fit/model_check.h"
#include "base/number_text.h"
#include "base/undefined.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/elided_label.h"
#include "desk/widgets/text.h"

namespace tarnwick {

CalculatorLine::CalculatorLine(QWidget* parent)
    : QWidget(parent),
      expression_(new QLineEdit(this)),
      at_(new QLabel(this)),
      x_(new NumberEdit(NumberEdit::Accepts::AnyNumber, this)),
      result_(new ElidedLabel(Qt::AlignLeft, this)) {
  expression_->setObjectName("CalculatorEdit");
  expression_->setPlaceholderText(tr("Any expression; empty: the one above"));
  x_->setObjectName("CalculatorX");
  x_->setMaximumWidth(90);
  x_->SetNumber(0);
  at_->setBuddy(x_);
  result_->setObjectName("CalculatorResult");
  result_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  result_->setAccessibleName(tr("Result"));
  auto* label = new QLabel(tr("Cal&culator:"), this);
  label->setBuddy(expression_);
  auto* equals = new QPushButton("=", this);
  equals->setObjectName("Evaluate");
  equals->setToolTip(tr("Evaluate"));
  equals->setAccessibleName(tr("Evaluate"));
  equals->setAutoDefault(false);
  equals->setMaximumWidth(40);
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(label);
  row->addWidget(expression_, 3);
  row->addWidget(at_);
  row->addWidget(x_);
  row->addWidget(equals);
  row->addWidget(result_, 4);
  for (QLineEdit* field : {expression_, static_cast<QLineEdit*>(x_)}) {
    connect(field, &QLineEdit::returnPressed, this, &CalculatorLine::Compute);
    connect(field, &QLineEdit::textChanged, this, &CalculatorLine::Compute);
  }
  connect(equals, &QPushButton::clicked, this, &CalculatorLine::Compute);
}

void CalculatorLine::PutModel(const FitSettings& model) {
  model_ = model;
  at_->setText(tr("at %1 =").arg(ToQt(model.XVarName)));
  Compute();
}

void CalculatorLine::Compute() {
  const std::string text = expression_->text().trimmed().toStdString();
  const std::optional<double> x = x_->Number();
  if (!x || (text.empty() && model_.Expression.empty())) return result_->clear();
  const Calculation answer = Calculate(model_, text, *x);
  // Of the model itself that is told at its own place.
  if (text.empty() && answer.names_unknown) return result_->ShowText({});
  const QString shown =
      answer.error.empty()
          ? IsUndefined(answer.value) ? tr("undefined") : ToQt(ShortestText(answer.value))
          : ToQt(answer.error);
  result_->ShowText(shown);
  QPalette palette;
  if (!answer.error.empty()) palette.setColor(QPalette::WindowText, WrongTextColor());
  result_->setPalette(palette);
}

}  // namespace tarnwick
