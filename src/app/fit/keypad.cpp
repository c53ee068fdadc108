#include "app/fit/keypad.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarnwick {
namespace {

struct Key {
  int row;
  int column;
  const char* caption;  ///< what the key writes
  const char* hint;
};

constexpr Key kKeys[] = {
    {0, 0, "7", "digit 7"},
    {0, 1, "8", "digit 8"},
    {0, 2, "9", "digit 9"},
    {0, 3, " / ", "divide"},
    {0, 4, "^", "raise to a power"},
    {0, 5, " < ", "less than"},
    {0, 6, " <= ", "less than or equal"},
    {0, 7, " and ", "logical and"},
    {1, 0, "4", "digit 4"},
    {1, 1, "5", "digit 5"},
    {1, 2, "6", "digit 6"},
    {1, 3, " * ", "multiply"},
    {1, 4, " div ", "integer devide (truncate result)"},
    {1, 5, " > ", "greater than"},
    {1, 6, " >= ", "greater than or equal"},
    {1, 7, " or ", "logical or"},
    {2, 0, "1", "digit 1"},
    {2, 1, "2", "digit 2"},
    {2, 2, "3", "digit 3"},
    {2, 3, " - ", "subtract"},
    {2, 4, " mod ", "remainder of integer division"},
    {2, 5, " = ", "equal"},
    {2, 6, " <> ", "not equal"},
    {2, 7, " xor ", "logical exclusive or"},
    {3, 0, "0", "digit 0"},
    {3, 1, ".", "decimal point"},
    {3, 2, "!", "faculty"},
    {3, 3, " + ", "add"},
    {3, 4, "%", "percentage"},
    {3, 5, "(", "open bracket"},
    {3, 6, ")", "close bracket"},
    {3, 7, " not ", "logical not"},
    {4, 4, ",", "delimiter for arguments"},
    {4, 5, "'", "delimiter for string constants"},
    {4, 6, " := ", "assign"},
};

constexpr const char* kFunctions[] = {
    "() = brackets",
    "abs(x) = absolute value",
    "arccos(x) = inverse cosine of x in rad",
    "arccosh(x) = inverse hyperbolic cosine in rad",
    "arcsin(x) = inverse sine of x in rad",
    "arcsinh(x) = inverse hyperbolic sine in rad",
    "cos(x) = cosine of an angle in rad",
    "cosh(x) = hyperbolic cosine of an angle in rad",
    "degtorad(x) = conversion from degrees to radians",
    "exp(x) = the value of e raised to the power of x",
    "ln(x) = natural logarithm of x",
    "log10(x) = logarithm base 10 of x",
    "logn(n,x) = logarithm base n of x",
    "max(x1,x2) = the maximum of both arguments",
    "min(x1,x2) = the minimum of both arguments",
    "pi = 3.1415926535897932385",
    "radtodeg(x) = conversion from degrees to radians",
    "random = random number between 0 and 1",
    "round(x) = round to the nearest integer",
    "sin(x) = sine of an angle in rad",
    "sinh(x) = hyperbolic sine of an angle in rad",
    "sqr(x) = the square of a number (x*x)",
    "sqrt(x) = the square root of a number",
    "tanh(x) = the hyperbolic tangent of an angle in rad",
    "trunc(x) = truncates a real number to an integer",
};

/// What an entry of the list writes: "abs(" of "abs(x) = ...".
QString WrittenBy(const QString& entry) {
  const QString word = entry.section(" = ", 0, 0);
  const qsizetype bracket = word.indexOf('(');
  return bracket < 0 ? word : word.left(bracket + 1);
}

}  // namespace

Keypad::Keypad(QWidget* parent) : QWidget(parent) {
  auto* row = new QHBoxLayout(this);
  row->addWidget(MakeKeys());
  row->addWidget(MakeFunctions(), 1);
}

QWidget* Keypad::MakeKeys() {
  auto* box = new QGroupBox(tr("Operands: "), this);
  auto* grid = new QGridLayout(box);
  grid->setSpacing(4);
  for (const Key& key : kKeys) {
    auto* button = new QPushButton(key.caption, box);
    button->setToolTip(key.hint);
    button->setAccessibleName(key.hint);
    button->setAutoDefault(false);
    button->setFocusPolicy(Qt::NoFocus);  // what it writes is typed as fast
    button->setFixedWidth(button->fontMetrics().horizontalAdvance(" and ") + 10);
    grid->addWidget(button, key.row, key.column);
    connect(button, &QPushButton::clicked, this, [this, button] { emit inserted(button->text()); });
  }
  grid->setRowStretch(5, 1);
  return box;
}

QWidget* Keypad::MakeFunctions() {
  auto* box = new QGroupBox(tr("Functions"), this);
  functions_ = new QListWidget(box);
  functions_->setObjectName("FunctionHelp");
  functions_->setAccessibleName(tr("Functions"));
  functions_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);  // the whole stands below
  for (const char* entry : kFunctions) functions_->addItem(entry);
  meaning_ = new QLabel(box);
  meaning_->setObjectName("FunctionMeaning");
  meaning_->setWordWrap(true);
  meaning_->setMinimumHeight(2 * meaning_->fontMetrics().lineSpacing());
  auto* insert = new QPushButton(tr("&Insert"), box);
  insert->setObjectName("InsertFunction");
  insert->setAutoDefault(false);
  insert->setEnabled(false);
  auto* below = new QHBoxLayout;
  below->addWidget(meaning_, 1);
  below->addWidget(insert);
  auto* column = new QVBoxLayout(box);
  column->addWidget(functions_, 1);
  column->addLayout(below);
  const auto write = [this] {
    if (const QListWidgetItem* entry = functions_->currentItem())
      emit inserted(WrittenBy(entry->text()));
  };
  connect(functions_, &QListWidget::currentTextChanged, this, [this, insert](const QString& entry) {
    meaning_->setText(entry);
    insert->setEnabled(!entry.isEmpty());
  });
  connect(functions_, &QListWidget::itemDoubleClicked, this, write);
  connect(insert, &QPushButton::clicked, this, write);
  return box;
}

}  // namespace tarnwick
