// The window that edits a fitting model: function and parameters, how it is fitted and drawn, with which other DataSets, and
// which of several models is worth its parameters; reads and writes it as a file. The model is its own: it tells every usable
// state, so that a curve may follow, and when that is to be kept. Knows no graph.
#pragma once

#include <QDialog>
#include <QStringList>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/fit/curve_preview.h"
#include "app/fit/fit_request.h"
#include "app/fit/function_files.h"
#include "fit/model/fit_settings.h"
#include "results/model_comparison.h"

class QLabel;
class QPushButton;
class QTabWidget;

namespace tarnwick {

class FitComparePage;
class FitFunctionPage;
class FitOptionsPage;
class FitTogetherPage;

/// What of a fitting model is edited first.
enum class CalcPage { Function, Settings };

/// What the window is about.
struct CalcSubject {
  FitSettings model;
  std::size_t points = 0;                             ///< of the DataSet
  QStringList data_sets = {};                         ///< names of all of the graph's
  int current = 0;                                    ///< the one whose model it is
  std::string x_name = {};                            ///< of its X, as it may stand in a formula
  std::vector<std::filesystem::path> functions = {};  ///< ready-made ones and the user's own
  FunctionFiles files;
  DrawPicture draw = {};  ///< the graph with the model as told last
  /// Starting values of the model as told last; nothing where the data tell none. Throws Error.
  std::function<std::optional<std::vector<ParameterSettings>>()> guess = {};
  /// Fits and ranks models of the DataSet.
  std::function<std::optional<ModelComparison>(std::vector<NamedModel>, const FitRunOptions&)>
      compare = {};
};

class TfrmCalc final : public QDialog {
  Q_OBJECT

 public:
  TfrmCalc(const CalcSubject& subject, CalcPage first, QWidget* parent = nullptr);

  /// How to fit at once, told once; nothing when the window was closed with OK or Cancel.
  std::optional<FitRequest> TakeFitWanted() { return std::exchange(fit_wanted_, std::nullopt); }

  void accept() override;

 signals:
  /// The model as it now is; not told while it cannot be used.
  void changed(const tarnwick::FitSettings& model);
  /// What was told last is to stay, whatever becomes of later changes.
  void applied();

 protected:
  /// Return takes over what is typed in a field, or presses the button that has the focus, and leaves the window open.
  /// Esc closes it without a question where nothing would be lost.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* MakeButtons();
  FitComparePage* MakeComparePage(const CalcSubject& subject);
  QWidget* MakeHead(const QString& data_set);
  void Put(const FitSettings& model);
  void Check();
  void Apply();
  /// False where the points tell none, which is told.
  bool Guess(const CalcSubject& subject);
  void Fit(const CalcSubject& subject);
  void Load();
  void Save();
  void ShowFile();
  void StartTyped(std::size_t points);
  void ShowReport();

  bool IsKept() const;

  FitSettings model_;
  FitSettings kept_;    // as it came, or was applied last
  bool usable_ = true;  // what is typed
  FunctionFiles files_;
  QTabWidget* pages_;
  CurvePreview* preview_;
  FitFunctionPage* function_;
  FitOptionsPage* options_;
  FitTogetherPage* together_;
  FitComparePage* compare_;
  QLabel* file_ = nullptr;
  QPushButton* ok_ = nullptr;
  QPushButton* apply_ = nullptr;
  QPushButton* save_ = nullptr;
  QPushButton* fit_ = nullptr;
  std::optional<FitRequest> fit_wanted_;
};

}  // namespace tarnwick
