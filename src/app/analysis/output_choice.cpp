#include "app/analysis/output_choice.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "desk/widgets/checked_field.h"
#include "desk/widgets/text.h"

namespace tarnwick {

OutputChoice::OutputChoice(AxisId first, QWidget* parent)
    : QGroupBox(tr("Output Data Set"), parent),
      second_(new QRadioButton(tr("Second"))),
      name_(new QLineEdit),
      why_not_(new QLabel) {
  auto* main = new QRadioButton(tr("Main"));
  main->setObjectName("AxisMain");
  main->setAccessibleName(tr("Main Y axis"));
  second_->setObjectName("AxisSecond");
  second_->setAccessibleName(tr("Second Y axis"));
  (first == AxisId::Y2 ? second_ : main)->setChecked(true);
  name_->setObjectName("e_Name");
  name_->setAccessibleName(tr("Name of the new DataSet"));
  name_->setMinimumWidth(name_->fontMetrics().averageCharWidth() * 34);
  why_not_->setObjectName("NameRefusal");
  why_not_->setWordWrap(true);
  why_not_->hide();
  QPalette colors = why_not_->palette();
  colors.setColor(QPalette::WindowText, WrongTextColor());
  why_not_->setPalette(colors);
  auto* axes = new QHBoxLayout;
  axes->addWidget(main);
  axes->addWidget(second_);
  axes->addStretch();
  auto* name_label = new QLabel(tr("Name: "));
  name_label->setBuddy(name_);
  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel(tr("Y Axis :")), 0, 0);
  grid->addLayout(axes, 0, 1);
  grid->addWidget(name_label, 1, 0);
  grid->addWidget(name_, 1, 1);
  grid->addWidget(why_not_, 2, 1);
  grid->setColumnStretch(1, 1);
  connect(second_, &QRadioButton::toggled, this, &OutputChoice::edited);
  connect(name_, &QLineEdit::textEdited, this, &OutputChoice::edited);
}

void OutputChoice::Offer(const std::string& name) {
  name_->setText(ToQt(name));
  name_->setCursorPosition(0);
}

NewSeries OutputChoice::Chosen() const {
  return {name_->text().toStdString(), second_->isChecked() ? AxisId::Y2 : AxisId::Y};
}

void OutputChoice::ShowRefusal(const QString& why) {
  MarkWrong(*name_, why);
  why_not_->setText(why);
  why_not_->setVisible(!why.isEmpty());
}

}  // namespace tarnwick
