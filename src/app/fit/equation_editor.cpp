#include "app/fit/equation_editor.h"

#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>
#include <utility>

#include "app/fit/fit_compare_page.h"
#include "app/fit/fit_function_page.h"
#include "app/fit/fit_options_page.h"
#include "app/fit/fit_together_page.h"
#include "app/fit/model_check.h"
#include "base/error.h"
#include "base/prompt.h"
#include "base/word_list.h"
#include "desk/widgets/elided_label.h"
#include "desk/widgets/reading_order.h"
#include "desk/widgets/text.h"
#include "desk/widgets/text_window.h"
#include "fit/model/curve_fit.h"
#include "fit/model/model_report.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

/// The report of a model that may not compile: it is complete but for what only compiling shows.
QString ReportOf(const FitSettings& settings) {
  TCurFit model;
  model.SetSettings(settings, MarkModified::No);
  QStringList lines;
  try {
    if (!settings.Expression.empty()) model.Prepare();
  } catch (const Error& error) {
    lines.append(ToQt(error.what()));
  }
  for (const std::string& line : Report(model)) lines.append(ToQt(line));
  return lines.join("\n");
}

/// Where what is typed ends with Return.
bool TakesReturn(const QWidget* field) {
  return qobject_cast<const QLineEdit*>(field) || qobject_cast<const QAbstractSpinBox*>(field) ||
         qobject_cast<const QAbstractItemView*>(field);
}

}  // namespace

TfrmCalc::TfrmCalc(const CalcSubject& subject, CalcPage first, QWidget* parent)
    : QDialog(parent),
      model_(subject.model),
      files_(subject.files),
      pages_(new QTabWidget(this)),
      preview_(new CurvePreview(subject.draw, this)),
      function_(new FitFunctionPage(preview_, this)),
      options_(new FitOptionsPage(this)),
      together_(new FitTogetherPage(subject.data_sets, subject.current, this)),
      compare_(MakeComparePage(subject)) {
  setObjectName("TfrmCalc");
  setWindowTitle(tr("Equation Editor"));
  resize(980, 600);
  pages_->addTab(function_, tr("Function"));
  pages_->addTab(options_, tr("Settings"));
  pages_->addTab(together_, tr("Several DataSets"));
  pages_->addTab(compare_, tr("Compare"));
  pages_->setCurrentIndex(first == CalcPage::Function ? 0 : 1);
  auto* column = new QVBoxLayout(this);
  column->addWidget(MakeHead(subject.data_sets.value(subject.current)));
  column->addWidget(pages_, 1);
  column->addWidget(MakeButtons());
  connect(fit_, &QPushButton::clicked, this, [this, subject] { Fit(subject); });
  function_->Put(model_);
  options_->Put(model_);
  connect(function_, &FitFunctionPage::parametersMade, this,
          [this, points = subject.points] { StartTyped(points); });
  connect(function_, &FitFunctionPage::guessWanted, this, [this, subject] { Guess(subject); });
  connect(function_, &FitFunctionPage::edited, this, &TfrmCalc::Check);
  connect(options_, &FitOptionsPage::edited, this, &TfrmCalc::Check);
  function_->SetXNames({subject.x_name});
  Check();
  kept_ = model_;
  TabInReadingOrder(*this);
  if (first == CalcPage::Function) function_->FocusExpression();
}

/// Whose model it is, and which file it is read from and written to.
QWidget* TfrmCalc::MakeHead(const QString& data_set) {
  auto* head = new QWidget(this);
  auto* whose = new ElidedLabel(Qt::AlignLeft | Qt::AlignVCenter, head);
  whose->ShowText(tr("Model of DataSet %1").arg(data_set));
  file_ = new QLabel(head);
  file_->setObjectName("FunctionFile");
  auto* load = new QPushButton(tr("L&oad…"), head);
  load->setObjectName("BtnLoadEqn");
  load->setToolTip(tr("Load a fitting function from a file"));
  save_ = new QPushButton(tr("&Save…"), head);
  save_->setObjectName("BtnSaveEqn");
  save_->setToolTip(tr("Save this model as a fitting function"));
  auto* row = new QHBoxLayout(head);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(whose, 1);
  row->addWidget(file_);
  for (QPushButton* button : {load, save_}) {
    button->setAutoDefault(false);
    row->addWidget(button);
  }
  connect(load, &QPushButton::clicked, this, &TfrmCalc::Load);
  connect(save_, &QPushButton::clicked, this, &TfrmCalc::Save);
  ShowFile();
  return head;
}

void TfrmCalc::ShowFile() {
  file_->setText(PathText(files_.current.name));
}

void TfrmCalc::Put(const FitSettings& model) {
  function_->Put(model);
  options_->Put(model);
}

bool TfrmCalc::Guess(const CalcSubject& subject) {
  try {
    emit changed(model_);
    const auto guess = subject.guess();
    if (!guess) throw Error("The data tell no starting values of this model.");
    FitSettings model = model_;
    model.parameters = *guess;
    Put(model);
    Check();
    return true;
  } catch (const Error& error) {
    files_.prompt.Tell(error.what());
    return false;
  }
}

/// A typed formula is fitted as it stands: its names become parameters, with values from the points. Where some are parameters
/// already, their values are the user's, and what the others start with is to be seen first.
void TfrmCalc::Fit(const CalcSubject& subject) {
  const bool from_text = model_.parameters.empty();
  const std::string variable = model_.XVarName;
  FitRequest request{.run = {}, .made = function_->MakeUnknownNames()};
  if (model_.XVarName != variable) request.variable = model_.XVarName;
  if (!request.made.empty() && !from_text) {
    const bool one = request.made.size() == 1;
    return files_.prompt.Tell(
        Listed(request.made) +
        (one ? " is a parameter now and starts at 1." : " are parameters now and start at 1.") +
        " Press Fit again, or choose other values before.");
  }
  if (!request.made.empty() && !Guess(subject)) return;
  request.run = options_->RunOptions();
  together_->Take(request);
  fit_wanted_ = request;
  accept();
}

void TfrmCalc::keyPressEvent(QKeyEvent* event) {
  const bool is_return = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (is_return && TakesReturn(focusWidget())) return;
  auto* const button = qobject_cast<QPushButton*>(focusWidget());
  if (is_return && button) return button->click();
  const bool asks = event->key() == Qt::Key_Escape && !IsKept();
  if (asks && files_.prompt.Ask({"Throw away what was changed in the Equation Editor?",
                                 {Answer::Yes, Answer::No}}) != Answer::Yes)
    return;
  QDialog::keyPressEvent(event);
}

void TfrmCalc::Load() {
  FitSettings model = model_;
  const bool loaded = LoadFunction(files_, model);
  if (!loaded) {
    if (model == model_) return;
    model_ = model;  // of what could not be read the DataSet takes nothing
  }
  Put(model);
  Check();
  ShowFile();
}

void TfrmCalc::Save() {
  SaveFunction(files_, model_);
  ShowFile();
}

void TfrmCalc::accept() {
  Apply();
  QDialog::accept();
}

bool TfrmCalc::IsKept() const {
  return usable_ && model_ == kept_;
}

void TfrmCalc::Apply() {
  kept_ = model_;
  emit changed(model_);
  emit applied();
}

FitComparePage* TfrmCalc::MakeComparePage(const CalcSubject& subject) {
  auto* page = new FitComparePage(
      subject.functions, subject.points, subject.x_name,
      [this, compare = subject.compare](std::vector<NamedModel> models) {
        return compare(std::move(models), options_->RunOptions());
      },
      this);
  connect(page, &FitComparePage::modelChosen, this, [this](const FitSettings& model) {
    FitSettings now = model_;
    now.Expression = model.Expression;
    now.XVarName = model.XVarName;
    now.parameters = model.parameters;
    now.templates = model.templates;
    now.ProcType = model.ProcType;
    Put(now);
    pages_->setCurrentWidget(function_);
    Check();
  });
  return page;
}

QWidget* TfrmCalc::MakeButtons() {
  auto* buttons = new QDialogButtonBox(
      QDialogButtonBox::Ok | QDialogButtonBox::Apply | QDialogButtonBox::Cancel, this);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  apply_ = buttons->button(QDialogButtonBox::Apply);
  fit_ = buttons->addButton(tr("&Fit"), QDialogButtonBox::ActionRole);
  fit_->setObjectName("FitNow");
  fit_->setToolTip(tr("Take these settings over and fit"));
  auto* list = buttons->addButton(tr("&List"), QDialogButtonBox::HelpRole);
  list->setObjectName("FitList");
  for (QPushButton* button : {apply_, fit_, list}) button->setAutoDefault(false);
  connect(buttons, &QDialogButtonBox::accepted, this, &TfrmCalc::accept);
  connect(apply_, &QPushButton::clicked, this, &TfrmCalc::Apply);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(list, &QPushButton::clicked, this, &TfrmCalc::ShowReport);
  ok_->setDefault(true);
  return buttons;
}

void TfrmCalc::Check() {
  FitSettings now = model_;
  const bool taken = function_->Take(now) && options_->Take(now);
  if (!taken) now = model_;
  ModelCheck check = CheckModel(now, function_->XNames());
  if (!taken) {
    const QString here = function_->Trouble();
    check.error =
        here.isEmpty() ? "A field on the page Settings holds no number." : here.toStdString();
  }
  const bool usable = usable_ = taken && check.error.empty();
  function_->ShowCheck(check, now);
  function_->AllowGuess(usable && !now.Expression.empty());
  for (QPushButton* button : {ok_, apply_, save_}) button->setEnabled(usable);
  fit_->setEnabled(usable && !now.Expression.empty());
  if (!usable) return;
  together_->PutParameters(now);
  compare_->PutModel(now);
  if (now == model_) return;
  // A function that is worked on is to be seen.
  if (now.Status == FitStatus::cf_None && !now.Expression.empty())
    now.Status = FitStatus::cf_Function;
  model_ = now;
  emit changed(model_);
  preview_->update();
}

void TfrmCalc::StartTyped(std::size_t points) {
  FitSettings now = model_;
  if (!options_->Take(now)) return;
  StartTypedModel(now, points);
  options_->Put(now);
}

void TfrmCalc::ShowReport() {
  TextWindow window("Tarnwick Curve Fitting Settings", ReportOf(model_), this);
  window.exec();
}

}  // namespace tarnwick
