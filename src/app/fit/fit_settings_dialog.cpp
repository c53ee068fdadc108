#include "app/fit/fit_settings_dialog.h"

#include <QDialogButtonBox>
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
  model.SetSettings(settings, false);
  QStringList lines;
  try {
    if (!settings.Expression.empty()) model.Prepare();
  } catch (const Error& error) {
    lines.append(ToQt(error.what()));
  }
  for (const std::string& line : Report(model)) lines.append(ToQt(line));
  return lines.join("\n");
}

}  // namespace

FitSettingsDialog::FitSettingsDialog(const FitSubject& subject, FitPage first, QWidget* parent)
    : QDialog(parent),
      model_(subject.model),
      pages_(new QTabWidget(this)),
      function_(new FitFunctionPage(this)),
      options_(new FitOptionsPage(this)),
      together_(new FitTogetherPage(subject.data_sets, subject.current, this)),
      compare_(MakeComparePage(subject)) {
  setObjectName("FitSettings");
  setWindowTitle(tr("Curve Fitting of %1").arg(subject.data_sets.value(subject.current)));
  resize(980, 540);
  pages_->addTab(function_, tr("Function"));
  pages_->addTab(options_, tr("Settings"));
  pages_->addTab(together_, tr("Several DataSets"));
  pages_->addTab(compare_, tr("Compare"));
  pages_->setCurrentIndex(first == FitPage::Function ? 0 : 1);
  auto* column = new QVBoxLayout(this);
  column->addWidget(pages_, 1);
  column->addWidget(MakeButtons());
  function_->Put(model_);
  options_->Put(model_);
  connect(function_, &FitFunctionPage::parametersMade, this,
          [this, points = subject.points] { StartTyped(points); });
  connect(function_, &FitFunctionPage::edited, this, &FitSettingsDialog::Check);
  connect(options_, &FitOptionsPage::edited, this, &FitSettingsDialog::Check);
  Check();
  if (first == FitPage::Function) function_->FocusExpression();
}

FitComparePage* FitSettingsDialog::MakeComparePage(const FitSubject& subject) {
  auto* page = new FitComparePage(
      subject.functions, subject.points,
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
    function_->Put(now);
    options_->Put(now);
    pages_->setCurrentWidget(function_);
    Check();
  });
  return page;
}

QWidget* FitSettingsDialog::MakeButtons() {
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  ok_ = buttons->button(QDialogButtonBox::Ok);
  fit_ = buttons->addButton(tr("&Fit"), QDialogButtonBox::ActionRole);
  fit_->setObjectName("FitNow");
  fit_->setToolTip(tr("Take these settings over and fit"));
  auto* list = buttons->addButton(tr("&List"), QDialogButtonBox::HelpRole);
  list->setObjectName("FitList");
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(fit_, &QPushButton::clicked, this, [this] {
    FitRequest request{.run = options_->RunOptions()};
    together_->Take(request);
    fit_wanted_ = request;
    accept();
  });
  connect(list, &QPushButton::clicked, this, &FitSettingsDialog::ShowReport);
  ok_->setDefault(true);
  return buttons;
}

void FitSettingsDialog::Check() {
  FitSettings now = model_;
  const bool taken = function_->Take(now) && options_->Take(now);
  const ModelCheck check = CheckModel(taken ? now : model_);
  const bool usable = taken && check.error.empty();
  function_->ShowCheck(check);
  ok_->setEnabled(usable);
  fit_->setEnabled(usable && !now.Expression.empty());
  if (!usable) return;
  together_->PutParameters(now);
  compare_->PutModel(now);
  if (now == model_) return;
  model_ = now;
  emit changed(model_);
}

void FitSettingsDialog::StartTyped(std::size_t points) {
  FitSettings now = model_;
  if (!options_->Take(now)) return;
  StartTypedModel(now, points);
  options_->Put(now);
}

void FitSettingsDialog::ShowReport() {
  TextWindow window("Tarnwick Curve Fitting Settings", ReportOf(model_), this);
  window.exec();
}

}  // namespace tarnwick
