// The page of a model's expression, parameters and templates, with what helps to write them: keys, functions, a calculator. Knows
// how they are checked; no DataSet.
#pragma once

#include <QWidget>
#include <string>
#include <vector>

#include "app/fit/model_check.h"
#include "fit/model/fit_settings.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;

namespace tarnwick {

class CalculatorLine;
class ExpressionEdit;
class ParameterTable;

class FitFunctionPage final : public QWidget {
  Q_OBJECT

 public:
  /// `beside`: what stands right of the parameters.
  explicit FitFunctionPage(QWidget* beside, QWidget* parent = nullptr);

  void Put(const FitSettings& model);
  /// Puts the page's values into `model`, whose expression stays where the field is empty; false, with nothing put, while a
  /// cell holds no number.
  bool Take(FitSettings& model) const;
  /// Shows what is the matter with the model, and offers to take unknown names for parameters.
  void ShowCheck(const ModelCheck& check, const FitSettings& model);
  /// What keeps Take from taking, a sentence; empty where nothing does.
  QString Trouble() const;
  void AllowGuess(bool allowed);
  void FocusExpression();
  /// What X is called: names that may be meant for the variable.
  void SetXNames(std::vector<std::string> names) { x_names_ = std::move(names); }
  const std::vector<std::string>& XNames() const { return x_names_; }
  /// Makes a parameter of every name that the check found to be none, but of that of X, where the expression lacks its
  /// variable, the variable; answers the parameters.
  std::vector<std::string> MakeUnknownNames();
  /// Makes the name that the check found to be meant for the variable the variable, which is no parameter then.
  void TakeMissedVariable();

 signals:
  void edited();
  /// The first parameters were made of the names in a typed formula.
  void parametersMade();
  /// Starting values are to be found in the data.
  void guessWanted();

 private:
  QWidget* MakeParameters();
  QWidget* MakeTemplates();
  void ShowMessage(const QString& text, bool is_error);

  ExpressionEdit* expression_;
  QLineEdit* x_name_;
  QLabel* message_;
  QPushButton* take_variable_;
  QPushButton* add_unknown_;
  ParameterTable* parameters_;
  QPushButton* guess_;
  QTableWidget* templates_;
  CalculatorLine* calculator_;
  ModelCheck check_;
  std::vector<std::string> x_names_;
  std::string taken_variable_;  // without having been asked for
};

}  // namespace tarnwick
