// One fitting model: an expression in one variable and named parameters, its templates, its settings, the result of its
// last fit while that holds. An expression parser that evaluates the model. Knows no DataSet and no minimiser.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "expr/formula_parser.h"
#include "fit/model/fit_record.h"
#include "fit/model/parameter.h"

namespace tarnwick {

/// Whether settings that are taken over count as an edit.
enum class MarkModified { No, Yes };

class TCurFit final : public TFormulaParser {
 public:
  TCurFit();

  // --- the model; what is not read here stands in Settings(). Setters notify as their property says; texts that are empty or
  // equal are ignored.
  void SetXVarName(const std::string& name);
  const std::string& Expression() const { return settings_.Expression; }
  void SetExpression(const std::string& text);
  FitStatus Status() const { return settings_.Status; }
  void SetStatus(FitStatus status);  ///< a matter of display: tells, but Modified and result stay
  void SetProcType(FitProcType type);
  void SetLeftMarginUsed(bool used);
  void SetRightMarginUsed(bool used);
  void SetLeftMargin(double x);              ///< notifies only while the margin is used
  void SetRightMargin(double x);             ///< notifies only while the margin is used
  void SetNPoints(std::int32_t points);      ///< ignored unless greater than 0
  void SetTolerance(double tolerance);       ///< ignored unless greater than 0
  void SetIterMax(std::int32_t iterations);  ///< ignored unless greater than 0
  bool CurveShown() const { return settings_.CurveShown; }
  void SetCurveShown(bool shown) { settings_.CurveShown = shown; }
  Color CurveColor() const { return settings_.CurveColor; }
  std::int32_t CurveStyle() const { return settings_.CurveStyle; }
  std::int32_t CurveWidth() const { return settings_.CurveWidth; }
  void SetCurveWidth(std::int32_t width) { settings_.CurveWidth = width; }

  // --- parameters, numbered from 1
  std::int32_t NParams() const { return static_cast<std::int32_t>(params_.size()); }
  TDBLParameter& Param(std::int32_t i) { return *params_.at(static_cast<std::size_t>(i - 1)); }
  const TDBLParameter& Param(std::int32_t i) const {
    return *params_.at(static_cast<std::size_t>(i - 1));
  }
  /// Throws Error (text as TDBLParameter::SetName) on a name already used; the parameter is then gone.
  void AddParameter(std::unique_ptr<TDBLParameter> parameter);
  // What was compiled read the values that go: there is nothing to evaluate until the next Prepare.
  void DeleteParameter(std::int32_t i);  ///< out of range does nothing
  void ClearParameters();
  /// Copies the values position by position and notifies; nothing when the numbers of parameters differ.
  void CopyValues(const TCurFit& other);

  // --- templates, in the order added
  // They work from the next Prepare on and tell nobody; the result holds no more.
  void AddTemplate(TemplateSettings text);
  void ClearTemplates();

  // --- evaluating
  /// Binds the variables, applies the templates from the last to the first and the ties, gives tied parameters their values,
  /// compiles. Throws EParserException, and Error when templates or ties blow the text up beyond reason or go in a circle.
  void Prepare();
  /// Gives tied parameters the values that the others now lead to, and tells nobody. Throws as Prepare, and EIntegerDivision.
  void UpdateTies();
  /// The model at x, by the expression Prepare compiled; undefined before. Throws EIntegerDivision.
  double Value(double x);
  /// The address the independent variable is bound to.
  const double* XValue() const { return x_value_.get(); }

  // --- the model as a value
  FitSettings Settings() const;
  /// Takes over all settings without compiling; the result holds no more; notifies with Modified as given. Of parameters of one
  /// name only the first is taken.
  void SetSettings(const FitSettings& settings, MarkModified modified);

  // --- what changed
  bool Modified() const { return modified_; }
  /// Sets Modified as given and calls OnChange.
  void Change(MarkModified modified);
  void SetOnChange(std::function<void()> on_change) { on_change_ = std::move(on_change); }
  /// The points changed: Modified is set and the result holds no more, without calling OnChange.
  void DataChanged() {
    modified_ = true;
    if (last_fit_.record != nullptr) last_fit_.points_changed = true;
  }

  /// The result of the last fit while it holds; null when there was none or points, values or settings changed since.
  std::shared_ptr<const FitResult> Result() const {
    return last_fit_.Holds() ? last_fit_.record->result : nullptr;
  }
  /// A result for the present values and points; null: none.
  void SetResult(std::shared_ptr<const FitResult> result);
  /// The last fit, whether or not it holds.
  const LastFit& Last() const { return last_fit_; }
  void SetLast(LastFit last) { last_fit_ = std::move(last); }

 private:
  friend class TDBLParameter;
  void CheckNameIsFree(const std::string& name) const;
  /// A change after which the result does not hold.
  void Edited();
  void Notify() const;
  void ModelChanged() { last_fit_.model_changed = last_fit_.record != nullptr; }
  /// Replaces `held` and tells, unless it is the same.
  template <class Held>
  void Store(Held& held, const Held& value);
  void StoreMargin(double& margin, double x, bool used);
  void AdoptParameters(const std::vector<ParameterSettings>& parameters);
  bool HasTies() const;
  void ForgetCompiled();
  void RestoreBuiltinWords();

  FitSettings settings_;  // its parameters stay empty: params_ holds them
  std::vector<std::unique_ptr<TDBLParameter>> params_;
  std::unique_ptr<double> x_value_ = std::make_unique<double>(0.0);
  bool modified_ = false;
  std::function<void()> on_change_;
  LastFit last_fit_;
};

}  // namespace tarnwick
