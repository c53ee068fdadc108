// The window that edits a DataSet's fitting model: function and parameters, how it is fitted and drawn, with which other
// DataSets, and which of several models is worth its parameters. Tells every usable state at once, so that the curve follows;
// whoever opened it takes back what was cancelled. Knows no graph.
#pragma once

#include <QDialog>
#include <QStringList>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "app/fit/fit_request.h"
#include "fit/model/fit_settings.h"
#include "results/model_comparison.h"

class QPushButton;
class QTabWidget;

namespace tarnwick {

class FitComparePage;
class FitFunctionPage;
class FitOptionsPage;
class FitTogetherPage;

/// What of a fitting model is edited first.
enum class FitPage { Function, Settings };

/// What the window is about.
struct FitSubject {
  FitSettings model;
  std::size_t points = 0;                             ///< of the DataSet
  QStringList data_sets = {};                         ///< names of all of the graph's
  int current = 0;                                    ///< the one whose model it is
  std::vector<std::filesystem::path> functions = {};  ///< ready-made ones and the user's own
  /// Fits and ranks models of the DataSet.
  std::function<std::optional<ModelComparison>(std::vector<NamedModel>, const FitRunOptions&)>
      compare = {};
};

class FitSettingsDialog final : public QDialog {
  Q_OBJECT

 public:
  FitSettingsDialog(const FitSubject& subject, FitPage first, QWidget* parent = nullptr);

  /// How to fit at once; nothing when the window was closed with OK or Cancel.
  const std::optional<FitRequest>& FitWanted() const { return fit_wanted_; }

 signals:
  /// The model as it now is; not told while it cannot be used.
  void changed(const tarnwick::FitSettings& model);

 private:
  QWidget* MakeButtons();
  FitComparePage* MakeComparePage(const FitSubject& subject);
  void Check();
  void StartTyped(std::size_t points);
  void ShowReport();

  FitSettings model_;
  QTabWidget* pages_;
  FitFunctionPage* function_;
  FitOptionsPage* options_;
  FitTogetherPage* together_;
  FitComparePage* compare_;
  QPushButton* ok_ = nullptr;
  QPushButton* fit_ = nullptr;
  std::optional<FitRequest> fit_wanted_;
};

}  // namespace tarnwick
