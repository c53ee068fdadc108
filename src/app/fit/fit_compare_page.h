// The page that fits several models to the DataSet and ranks them. Knows models and what their comparison says; the fits are
// run by whoever made the page.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "fit/model/fit_settings.h"
#include "results/model_comparison.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace tarnwick {

class CheckList;

/// Fits and ranks; nothing when the user ends it. Throws Error.
using ModelComparer = std::function<std::optional<ModelComparison>(std::vector<NamedModel>)>;

class FitComparePage final : public QWidget {
  Q_OBJECT

 public:
  /// `functions`: files of functions to choose from. `points`: of the DataSet. `x_name`: what its X is called.
  FitComparePage(const std::vector<std::filesystem::path>& functions, std::size_t points,
                 std::string x_name, ModelComparer compare, QWidget* parent = nullptr);

  /// The model being edited: a candidate, whose margins, number of points and weights hold for all.
  void PutModel(const FitSettings& model);

 signals:
  /// The model is to be taken over, with the values found.
  void modelChosen(const tarnwick::FitSettings& model);

 private:
  /// One that can be compared; a file is read when it is needed.
  struct Candidate {
    QString name;
    std::filesystem::path file;
    FitSettings model;
    ModelStart start = ModelStart::AsGiven;
  };

  QLayout* MakeChoice();
  QLayout* MakeAnswer();
  void AddCandidate(Candidate candidate, Qt::CheckState state);
  /// False, with the reason shown, where the formula typed is none.
  bool AddFormula();
  std::vector<NamedModel> Chosen() const;
  void Compare();
  void ShowAnswer();
  void ShowRow(int row, const std::vector<std::string>& texts);
  const FitResult& ResultIn(int row) const;
  void ShowRemarks(const QString& text, bool is_error);
  void FollowChoice();
  void Use();

  std::vector<Candidate> candidates_;  // the first is the model being edited
  std::size_t points_;
  std::string x_name_;
  ModelComparer compare_;
  std::optional<ModelComparison> answer_;
  CheckList* list_ = nullptr;
  QLineEdit* formula_ = nullptr;
  QPushButton* compare_now_ = nullptr;
  QTableWidget* table_ = nullptr;
  QLabel* remarks_ = nullptr;
  QPushButton* copy_ = nullptr;
  QPushButton* use_ = nullptr;
};

}  // namespace tarnwick
