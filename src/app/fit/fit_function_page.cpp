#include "app/fit/fit_function_page.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/fit/calculator_line.h"
#include "app/fit/keypad.h"
#include "app/fit/parameter_table.h"
#include "base/number_text.h"
#include "desk/widgets/checked_field.h"
#include "desk/widgets/expression_edit.h"
#include "desk/widgets/text.h"
#include "fit/model/typed_model.h"

namespace tarnwick {
namespace {

constexpr int kExpressionLines = 3;

std::string CellText(const QTableWidget& table, int row, int column) {
  const QTableWidgetItem* item = table.item(row, column);
  return item ? item->text().trimmed().toStdString() : std::string();
}

/// Buttons below one another, right of a table.
QVBoxLayout* ButtonColumn(std::initializer_list<QPushButton*> buttons) {
  auto* column = new QVBoxLayout;
  for (QPushButton* button : buttons) {
    button->setAutoDefault(false);
    column->addWidget(button);
  }
  column->addStretch(1);
  return column;
}

}  // namespace

FitFunctionPage::FitFunctionPage(QWidget* beside, QWidget* parent)
    : QWidget(parent),
      expression_(new ExpressionEdit(kExpressionLines, this)),
      x_name_(new QLineEdit(this)),
      message_(new QLabel(this)),
      take_variable_(new QPushButton(this)),
      add_unknown_(new QPushButton(tr("Ma&ke Parameters"), this)),
      calculator_(new CalculatorLine(this)) {
  expression_->setObjectName("ExpressionEdit");
  auto* label = new QLabel(tr("&Mathematical or logical expression:"), this);
  label->setBuddy(expression_);
  x_name_->setObjectName("VariableEdit");
  auto* x_label = new QLabel(tr("Independent &variable:"), this);
  x_label->setBuddy(x_name_);
  x_name_->setMaximumWidth(90);
  message_->setObjectName("ExpressionMessage");
  message_->setWordWrap(true);
  message_->setTextFormat(Qt::PlainText);
  message_->setMinimumHeight(add_unknown_->sizeHint().height());
  take_variable_->setObjectName("TakeVariable");
  take_variable_->setAutoDefault(false);
  add_unknown_->setAutoDefault(false);
  auto* top = new QHBoxLayout;
  top->addWidget(label, 1);
  top->addWidget(x_label);
  top->addWidget(x_name_);
  auto* below = new QHBoxLayout;
  below->addWidget(message_, 1);
  below->addWidget(take_variable_, 0, Qt::AlignTop);
  below->addWidget(add_unknown_, 0, Qt::AlignTop);
  auto* tabs = new QTabWidget(this);
  tabs->addTab(MakeParameters(), tr("Parameters"));
  auto* keypad = new Keypad(tabs);
  connect(keypad, &Keypad::inserted, expression_, &ExpressionEdit::Insert);
  tabs->addTab(keypad, tr("Keypad and Functions"));
  tabs->addTab(MakeTemplates(), tr("Templates"));
  auto* column = new QVBoxLayout(this);
  column->addLayout(top);
  column->addWidget(expression_);
  column->addLayout(below);
  auto* lower = new QSplitter(this);
  lower->setChildrenCollapsible(false);
  lower->addWidget(tabs);
  lower->addWidget(beside);
  lower->setStretchFactor(0, 1);
  lower->setSizes({640, beside->sizeHint().width()});
  column->addWidget(lower, 1);
  column->addWidget(calculator_);
  connect(expression_, &QPlainTextEdit::textChanged, this, &FitFunctionPage::edited);
  connect(x_name_, &QLineEdit::textChanged, this, &FitFunctionPage::edited);
  connect(take_variable_, &QPushButton::clicked, this, &FitFunctionPage::TakeMissedVariable);
  connect(add_unknown_, &QPushButton::clicked, this, &FitFunctionPage::MakeUnknownNames);
}

QWidget* FitFunctionPage::MakeParameters() {
  auto* box = new QWidget(this);
  parameters_ = new ParameterTable(box);
  auto* add = new QPushButton(tr("&Add"), box);
  add->setObjectName("AddParameter");
  auto* remove = new QPushButton(tr("&Delete"), box);
  remove->setObjectName("DeleteParameter");
  guess_ = new QPushButton(tr("G&uess"), box);
  guess_->setObjectName("GuessStart");
  guess_->setToolTip(
      tr("Find starting values of the varied parameters in the data; names that are "
         "no parameters yet become some"));
  auto* row = new QHBoxLayout(box);
  row->addWidget(parameters_, 1);
  row->addLayout(ButtonColumn({add, remove, guess_}));
  connect(guess_, &QPushButton::clicked, this, [this] {
    MakeUnknownNames();
    emit guessWanted();
  });
  connect(add, &QPushButton::clicked, this, [this] {
    ParameterSettings parameter;
    FitSettings present;
    Take(present);
    parameter.Name = FreeParameterName(present.parameters);
    parameter.Description = "Parameter " + parameter.Name;
    parameter.Vary = true;
    parameters_->Add(parameter);
  });
  connect(remove, &QPushButton::clicked, parameters_, &ParameterTable::DeleteCurrent);
  connect(parameters_, &ParameterTable::edited, this, &FitFunctionPage::edited);
  return box;
}

QWidget* FitFunctionPage::MakeTemplates() {
  auto* box = new QWidget(this);
  templates_ = new QTableWidget(0, 3, box);
  templates_->setObjectName("TemplateTable");
  templates_->setAccessibleName(tr("Templates"));
  templates_->setHorizontalHeaderLabels({tr("Name"), tr("Text"), tr("Description")});
  templates_->horizontalHeader()->setStretchLastSection(true);
  templates_->verticalHeader()->hide();
  templates_->setTabKeyNavigation(false);  // the tab key leaves the table; in a cell it goes on
  templates_->setColumnWidth(1, 280);
  auto* add = new QPushButton(tr("A&dd"), box);
  auto* remove = new QPushButton(tr("Dele&te"), box);
  auto* hint = new QLabel(tr("Every occurrence of a template's name in the expression is replaced "
                             "by its text before the expression is compiled."),
                          box);
  hint->setWordWrap(true);
  hint->setForegroundRole(QPalette::PlaceholderText);
  auto* row = new QHBoxLayout;
  row->addWidget(templates_, 1);
  row->addLayout(ButtonColumn({add, remove}));
  auto* column = new QVBoxLayout(box);
  column->addWidget(hint);
  column->addLayout(row, 1);
  connect(add, &QPushButton::clicked, this, [this] {
    const int last = templates_->rowCount();
    templates_->insertRow(last);
    templates_->setCurrentCell(last, 0);
    templates_->setFocus();
  });
  connect(remove, &QPushButton::clicked, this, [this] {
    if (templates_->currentRow() < 0) return;
    templates_->removeRow(templates_->currentRow());
    emit edited();
  });
  connect(templates_, &QTableWidget::itemChanged, this, &FitFunctionPage::edited);
  return box;
}

void FitFunctionPage::Put(const FitSettings& model) {
  const QSignalBlocker quiet(this);
  expression_->SetExpression(model.Expression);
  x_name_->setText(ToQt(model.XVarName));
  parameters_->SetParameters(model.parameters);
  templates_->setRowCount(static_cast<int>(model.templates.size()));
  int row = 0;
  for (const TemplateSettings& one : model.templates) {
    templates_->setItem(row, 0, new QTableWidgetItem(ToQt(one.Name)));
    templates_->setItem(row, 1, new QTableWidgetItem(ToQt(one.Text)));
    templates_->setItem(row, 2, new QTableWidgetItem(ToQt(one.Description)));
    ++row;
  }
}

bool FitFunctionPage::Take(FitSettings& model) const {
  auto parameters = parameters_->Parameters();
  if (!parameters) return false;
  model.parameters = *std::move(parameters);
  const std::string text = expression_->Expression();
  if (!TrimBlanks(text).empty()) model.Expression = text;
  const std::string x_name = x_name_->text().trimmed().toStdString();
  if (!x_name.empty()) model.XVarName = x_name;
  model.templates.clear();
  for (int row = 0; row < templates_->rowCount(); ++row) {
    TemplateSettings one{CellText(*templates_, row, 0), CellText(*templates_, row, 1),
                         CellText(*templates_, row, 2)};
    if (!one.Name.empty()) model.templates.push_back(one);
  }
  return true;
}

void FitFunctionPage::ShowMessage(const QString& text, bool is_error) {
  message_->setText(text);
  QPalette palette;
  if (is_error) palette.setColor(QPalette::WindowText, WrongTextColor());
  message_->setPalette(palette);
}

void FitFunctionPage::ShowCheck(const ModelCheck& check, const FitSettings& model) {
  check_ = check;
  QStringList names = {ToQt(model.XVarName)};
  for (const ParameterSettings& one : model.parameters) names.append(ToQt(one.Name));
  for (const TemplateSettings& one : model.templates) names.append(ToQt(one.Name));
  expression_->SetNames(names);
  calculator_->PutModel(model);
  std::string error = check.error;
  bool in_expression = check.in_expression;
  const bool emptied = TrimBlanks(expression_->Expression()).empty() && !model.Expression.empty();
  if (error.empty() && emptied) {
    error = "The field is empty; the model keeps " + model.Expression;
    in_expression = true;
  }
  add_unknown_->setVisible(error.empty() && !check.unknown_names.empty());
  const bool asks = error.empty() && !check.missed_variable.empty();
  take_variable_->setVisible(asks);
  if (asks)
    take_variable_->setText(tr("&Yes, %1 Is the Variable").arg(ToQt(check.missed_variable)));
  expression_->ShowTrouble(in_expression ? error : std::string(), check.place);
  if (!error.empty()) return ShowMessage(ToQt(error), true);
  QStringList unknown;
  for (const std::string& name : check.unknown_names) unknown.append(ToQt(name));
  QStringList told;
  if (!taken_variable_.empty() && model.XVarName == taken_variable_)
    told.append(ToQt(TakenAsVariable(taken_variable_)));
  if (!unknown.isEmpty())
    told.append(tr("Neither the variable nor a parameter: %1").arg(unknown.join(", ")));
  for (const std::string& warning : check.warnings) told.append(ToQt(warning));
  ShowMessage(told.join('\n'), false);
}

QString FitFunctionPage::Trouble() const {
  return parameters_->Trouble();
}

void FitFunctionPage::AllowGuess(bool allowed) {
  guess_->setEnabled(allowed);
}

void FitFunctionPage::FocusExpression() {
  expression_->setFocus();
}

void FitFunctionPage::TakeMissedVariable() {
  const std::string variable = check_.missed_variable;
  parameters_->Delete(variable);
  x_name_->setText(ToQt(variable));
}

std::vector<std::string> FitFunctionPage::MakeUnknownNames() {
  FitSettings model;
  if (!check_.unknown_names.empty() && Take(model) && ChooseVariable(model, x_names_)) {
    taken_variable_ = model.XVarName;
    x_name_->setText(ToQt(model.XVarName));
  }
  std::vector<std::string> names = check_.unknown_names;  // which the parameters added change
  if (names.empty()) return names;
  if (const auto present = parameters_->Parameters(); present && present->empty())
    emit parametersMade();
  for (const std::string& name : names) parameters_->Add(MadeParameter(name));
  return names;
}

}  // namespace tarnwick
