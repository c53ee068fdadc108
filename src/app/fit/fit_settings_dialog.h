// The window that edits a DataSet's fitting model: function and parameters, how it is fitted and drawn. Tells every usable
// state at once, so that the curve follows; whoever opened it takes back what was cancelled. Knows no graph.
#pragma once

#include <QDialog>
#include <cstddef>
#include <optional>

#include "analysis/fit_job.h"
#include "fit/model/fit_settings.h"

class QPushButton;
class QTabWidget;

namespace tarnwick {

class FitFunctionPage;
class FitOptionsPage;

/// What of a fitting model is edited first.
enum class FitPage { Function, Settings };

class FitSettingsDialog final : public QDialog {
  Q_OBJECT

 public:
  /// `points`: of the DataSet.
  FitSettingsDialog(const QString& data_set, std::size_t points, const FitSettings& model,
                    FitPage first, QWidget* parent = nullptr);

  /// How to fit at once; nothing when the window was closed with OK or Cancel.
  const std::optional<FitRunOptions>& FitWanted() const { return fit_wanted_; }

 signals:
  /// The model as it now is; not told while it cannot be used.
  void changed(const tarnwick::FitSettings& model);

 private:
  QWidget* MakeButtons();
  void Check();
  void StartTyped(std::size_t points);
  void ShowReport();

  FitSettings model_;
  QTabWidget* pages_;
  FitFunctionPage* function_;
  FitOptionsPage* options_;
  QPushButton* ok_ = nullptr;
  QPushButton* fit_ = nullptr;
  std::optional<FitRunOptions> fit_wanted_;
};

}  // namespace tarnwick
