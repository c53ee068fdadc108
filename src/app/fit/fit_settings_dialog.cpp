#include "app/fit/fit_settings_dialog.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/fit/fit_function_page.h"
#include "app/fit/fit_options_page.h"
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

FitSettingsDialog::FitSettingsDialog(const QString& data_set, std::size_t points,
                                     const FitSettings& model, FitPage first, QWidget* parent)
    : QDialog(parent),
      model_(model),
      pages_(new QTabWidget(this)),
      function_(new FitFunctionPage(this)),
      options_(new FitOptionsPage(this)) {
  setObjectName("FitSettings");
  setWindowTitle(tr("Curve Fitting of %1").arg(data_set));
  resize(920, 480);
  pages_->addTab(function_, tr("Function"));
  pages_->addTab(options_, tr("Settings"));
  pages_->setCurrentIndex(first == FitPage::Function ? 0 : 1);
  auto* column = new QVBoxLayout(this);
  column->addWidget(pages_, 1);
  column->addWidget(MakeButtons());
  function_->Put(model_);
  options_->Put(model_);
  connect(function_, &FitFunctionPage::parametersMade, this,
          [this, points] { StartTyped(points); });
  connect(function_, &FitFunctionPage::edited, this, &FitSettingsDialog::Check);
  connect(options_, &FitOptionsPage::edited, this, &FitSettingsDialog::Check);
  Check();
  if (first == FitPage::Function) function_->FocusExpression();
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
    fit_wanted_ = options_->RunOptions();
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
  if (!usable || now == model_) return;
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
