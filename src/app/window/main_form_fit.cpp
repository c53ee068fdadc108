// The main window's part in fitting: the panel of results, the window of settings, the menu of function files.
#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QScreen>
#include <QSettings>
#include <algorithm>
#include <memory>
#include <vector>

#include "app/fit/fit_panel.h"
#include "app/fit/fit_settings_dialog.h"
#include "app/fit/fit_work.h"
#include "app/window/main_form.h"
#include "base/error.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/document/open_edit.h"
#include "desk/widgets/text.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

constexpr const char* kDialogSizeKey = "FitSettings/Size";
constexpr int kGraphsWidth = 700;  // pixels that graphs are read well in, beside the panel

}  // namespace

void T_MainForm::BuildFitPanel() {
  fit_dock_ = new QDockWidget(tr("Fit Result"), this);
  fit_dock_->setObjectName("FitResult");
  fit_panel_ = new FitPanel(*actions_, fit_dock_);
  fit_dock_->setWidget(fit_panel_);
  addDockWidget(Qt::RightDockWidgetArea, fit_dock_);
  fit_dock_->hide();
  connect(fit_dock_, &QDockWidget::visibilityChanged, this, [this] { actions_->Update(); });
}

void T_MainForm::ShowFitResult(bool shown) {
  if (shown && fit_dock_->isHidden()) MakeRoomForPanel();
  fit_dock_->setVisible(shown);
}

/// Widens the window, as far as the screen goes, where the panel would leave the graphs too little.
void T_MainForm::MakeRoomForPanel() {
  if (isMaximized() || isFullScreen() || fit_dock_->isFloating()) return;
  const int panel = fit_dock_->sizeHint().width();
  const int wanted = kGraphsWidth + panel - width();
  const int room = screen()->availableGeometry().right() - frameGeometry().right();
  const int more = std::clamp(wanted, 0, std::max(room, 0));
  resize(width() + more, height());
  resizeDocks({fit_dock_}, {panel}, Qt::Horizontal);
}

bool T_MainForm::FitResultIsShown() const {
  return fit_dock_ != nullptr && !fit_dock_->isHidden();
}

void T_MainForm::EditFitModel(Document& document, FitPage page) {
  std::optional<FitRunOptions> fit_wanted;
  {
    OpenEdit step(document, "Fit Settings");
    TSeries& series = CurrentDataSet(document);
    FitSettingsDialog dialog(ToQt(series.SeriesName()), series.Fit().Settings(), page, this);
    connect(&dialog, &FitSettingsDialog::changed, this,
            [&](const FitSettings& model) { TakeFitSettings(series, model); });
    const QSize size = parts_.settings->value(kDialogSizeKey, dialog.size()).toSize();
    dialog.resize(size.boundedTo(screen()->availableSize()));
    // What is not finished here is taken back.
    if (dialog.exec() == QDialog::Accepted) step.Finish();
    parts_.settings->setValue(kDialogSizeKey, dialog.size());
    fit_wanted = dialog.FitWanted();
  }
  if (!fit_wanted) return;
  FitAgain(document, *fit_wanted, *parts_.prompt);
  ShowFitResult(true);
}

void T_MainForm::BuildFunctionMenu() {
  QMenu* menu = actions_->MenuOf(Menu::CurveFitting);
  if (!parts_.paths.fit_functions.empty()) menu->addSeparator();
  int number = 0;
  for (const auto& file : parts_.paths.fit_functions) {
    const QString name = PathText(file.stem()).replace("&", "&&");
    // From 10 on the first digit would be the key of two functions, and neither ran at once.
    const QString key = ++number < 10 ? QStringLiteral("&") : QString();
    QAction* item = menu->addAction(key + QStringLiteral("%1 %2").arg(number).arg(name));
    item->setStatusTip(tr("Use the function of %1 for the current DataSet").arg(PathText(file)));
    connect(item, &QAction::triggered, this, [this, file] {
      actions_->RunAsCommand([&](CommandContext& context) {
        if (!HasDataSet(context)) throw Error("No DataSet Found!");
        ApplyFitFunction(*context.document, file);
      });
    });
  }
}

}  // namespace tarnwick
