// The panel that tells what the fit of the current DataSet found: verdict, parameters, statistics, correlations, and what
// can be done with them. Knows documents and results; fits nothing itself.
#pragma once

#include <memory>
#include <string>

#include "analysis/fits/fit_job.h"
#include "desk/panels/panel.h"
#include "fit/fit_result.h"
#include "fit/model/fit_settings.h"

class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QScrollArea;

namespace tarnwick {

class FitTogetherView;
class FullTable;
class TSeries;
class VerdictLabel;
class WrappedLabel;

class FitPanel final : public Panel {
  Q_OBJECT

 public:
  /// `actions` runs what the buttons ask for and outlives the panel.
  explicit FitPanel(CommandActions& actions, QWidget* parent = nullptr);

  /// Shows the fit of the document's current DataSet. A result that no longer holds is shown greyed, with what
  /// changed, unless its function is gone.
  void Follow(Document* document, PanelChange change) override;

  QSize sizeHint() const override { return {340, 480}; }

 private:
  /// Whose result is shown, and what it is.
  struct Shown {
    std::string data_set;
    FitSettings model;
    std::shared_ptr<const FitResult> result;
  };
  enum class State { Nothing, Valid, Outdated };

  QWidget* MakeContent();
  QWidget* MakeButtons();
  QPushButton* AddButton(QGridLayout& grid, int row, int column, const QString& text,
                         const QString& tip);
  void ShowResult();
  void ShowVerdict();
  void ShowParameters();
  void ShowCorrelations();
  void ShowHint(const TSeries* series);
  void SetState(State state);
  void FitFromHere(FinishingStep finish);

  CommandActions& actions_;
  Shown shown_;
  bool can_fit_ = false;  // with nothing shown
  WrappedLabel* hint_ = nullptr;
  QLabel* outdated_ = nullptr;
  QPushButton* again_ = nullptr;
  QScrollArea* scroll_ = nullptr;
  QWidget* buttons_ = nullptr;
  VerdictLabel* verdict_ = nullptr;
  WrappedLabel* notes_ = nullptr;
  FullTable* parameters_ = nullptr;
  WrappedLabel* error_model_ = nullptr;
  FullTable* figures_ = nullptr;
  QLabel* correlations_title_ = nullptr;
  FullTable* correlations_ = nullptr;
  FitTogetherView* together_ = nullptr;
  QPushButton* all_points_ = nullptr;
  QPushButton* finish_ = nullptr;
  QPushButton* residuals_ = nullptr;
  QPushButton* bands_ = nullptr;
  QDoubleSpinBox* level_ = nullptr;
};

std::unique_ptr<Panel> MakeFitPanel(const PanelParts& parts);

}  // namespace tarnwick
