#include "desk/fields/text_field.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QToolButton>
#include <array>

#include "base/day_number.h"
#include "base/number_text.h"
#include "desk/fields/wheel_guard.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr int kShortest = 90;  // pixels of a line

/// One that tells its kinds of parts apart: 3 April 2024, 14:05:06.
constexpr double kSampleMoment = 45385.586875;

constexpr std::array kFormats = {"dd-mmm",     "dd-mmm-yyyy", "yyyy-mm-dd", "dd.mm.yyyy",
                                 "mm/dd/yyyy", "hh:nn",       "hh:nn:ss",   "yyyy-mm-dd hh:nn",
                                 "mmm yyyy",   "yyyy"};

struct UsualSeparator {
  char character;
  const char* caption;
  const char* name;
};
constexpr std::array kUsualSeparators = {
    UsualSeparator{'\t', "Tab", "Tabs separate"}, UsualSeparator{' ', "Blank", "Blanks separate"},
    UsualSeparator{',', ",", "Commas separate"},  UsualSeparator{';', ";", "Semicolons separate"},
    UsualSeparator{'|', "|", "Bars separate"},
};

QString TextOf(const std::optional<FieldValue>& value) {
  const auto* text = value ? std::get_if<std::string>(&*value) : nullptr;
  return text ? ToQt(*text) : QString();
}

void ShowText(QLineEdit& line, const std::optional<FieldValue>& value) {
  line.setPlaceholderText(value ? QString() : QObject::tr("various"));
  line.setText(TextOf(value));
  line.setCursorPosition(0);
}

}  // namespace

TextField::TextField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), line_(new QLineEdit(this)) {
  line_->setMinimumWidth(kShortest);
  AddControl(line_);
  connect(line_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Take(text.toStdString()); });
}

void TextField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  ShowText(*line_, value);
}

SeparatorsField::SeparatorsField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), others_(nullptr) {
  auto* holder = new QWidget(this);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  for (const UsualSeparator& separator : kUsualSeparators) {
    auto* box = new QCheckBox(separator.caption, holder);
    box->setToolTip(separator.name);
    box->setAccessibleName(box->toolTip());
    connect(box, &QCheckBox::clicked, this, &SeparatorsField::TakeAll);
    line->addWidget(box);
    usual_.push_back(box);
  }
  others_ = new QLineEdit(holder);
  others_->setToolTip(tr("Other separators, one character each"));
  others_->setAccessibleName(others_->toolTip());
  others_->setMaximumWidth(kShortest / 2);
  connect(others_, &QLineEdit::textEdited, this, &SeparatorsField::TakeAll);
  line->addWidget(others_);
  line->addStretch();
  AddControl(holder, usual_.front());
}

void SeparatorsField::TakeAll() {
  std::string separators;
  for (std::size_t i = 0; i < usual_.size(); ++i) {
    if (usual_[i]->isChecked()) separators += kUsualSeparators[i].character;
  }
  Take(separators + others_->text().toStdString());
}

void SeparatorsField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  QString others = TextOf(value);
  for (std::size_t i = 0; i < usual_.size(); ++i) {
    const QChar character(kUsualSeparators[i].character);
    const QSignalBlocker blocker(usual_[i]);
    usual_[i]->setChecked(others.contains(character));
    others.remove(character);
  }
  const QSignalBlocker blocker(others_);
  others_->setText(others);
}

ColumnField::ColumnField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), list_(new QComboBox(this)) {
  list_->setEditable(true);
  list_->setInsertPolicy(QComboBox::NoInsert);
  list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  LeaveWheelAlone(*list_);
  AddControl(list_);
  const auto take = [this] { Take(list_->currentText().toStdString()); };
  connect(list_, &QComboBox::activated, this, take);
  connect(list_->lineEdit(), &QLineEdit::textEdited, this, take);
}

void ColumnField::ShowValue(const std::optional<FieldValue>& value,
                            const FieldSurroundings& around) {
  const QSignalBlocker blocker(list_);
  list_->clear();
  for (const std::string& column : around.columns) list_->addItem(ToQt(column));
  list_->setCurrentIndex(-1);
  ShowText(*list_->lineEdit(), value);
}

PathField::PathField(const FieldRow& row, QWidget* parent) : FieldWidget(row, parent) {
  auto* holder = new QWidget(this);
  auto* line = new QHBoxLayout(holder);
  line->setContentsMargins(0, 0, 0, 0);
  line_ = new QLineEdit(holder);
  line_->setMinimumWidth(kShortest);
  auto* browse = new QToolButton(holder);
  browse->setText(tr("…"));
  browse->setToolTip(tr("Look for it"));
  browse->setAccessibleName(tr("Look for %1").arg(ToQt(row.look.caption)));
  line->addWidget(line_);
  line->addWidget(browse);
  AddControl(holder, line_);
  connect(line_, &QLineEdit::textEdited, this,
          [this](const QString& text) { Take(text.toStdString()); });
  connect(browse, &QToolButton::clicked, this, &PathField::Browse);
}

void PathField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  ShowText(*line_, value);
}

void PathField::Browse() {
  const QString caption = ToQt(Row().look.caption);
  const QString chosen = Row().look.control.kind == ControlKind::Folder
                             ? QFileDialog::getExistingDirectory(window(), caption, line_->text())
                             : QFileDialog::getOpenFileName(window(), caption, line_->text());
  if (chosen.isEmpty()) return;
  line_->setText(chosen);
  Take(chosen.toStdString());
}

DateFormatField::DateFormatField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), list_(new QComboBox(this)) {
  list_->setEditable(true);
  list_->setInsertPolicy(QComboBox::NoInsert);
  list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  for (const char* format : kFormats) {
    list_->addItem(format);
    list_->setItemData(list_->count() - 1, ToQt(FormatDay(kSampleMoment, format)), Qt::ToolTipRole);
  }
  LeaveWheelAlone(*list_);
  AddControl(list_);
  const auto take = [this] { Take(list_->currentText().toStdString()); };
  connect(list_, &QComboBox::activated, this, take);
  connect(list_->lineEdit(), &QLineEdit::textEdited, this, take);
}

void DateFormatField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  const QSignalBlocker blocker(list_);
  list_->setCurrentIndex(-1);
  ShowText(*list_->lineEdit(), value);
}

ReadOnlyField::ReadOnlyField(const FieldRow& row, QWidget* parent)
    : FieldWidget(row, parent), text_(new QLabel(this)) {
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setWordWrap(true);
  AddControl(text_);
  text_->setToolTip(tr("Not set here: %1").arg(ToQt(row.look.control.reason)));
}

void ReadOnlyField::ShowValue(const std::optional<FieldValue>& value, const FieldSurroundings&) {
  const auto* integer = value ? std::get_if<std::int32_t>(&*value) : nullptr;
  text_->setText(integer ? QString::number(*integer) : TextOf(value));
}

}  // namespace tarnwick
