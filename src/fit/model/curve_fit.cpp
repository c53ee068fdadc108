#include "fit/model/curve_fit.h"

#include <algorithm>
#include <span>
#include <unordered_set>
#include <utility>

#include "base/error.h"
#include "base/text_encoding.h"
#include "expr/words/added_words.h"
#include "expr/words/builtin_words.h"
#include "fit/model/templates.h"
#include "fit/model/ties.h"

namespace tarnwick {

TCurFit::TCurFit() = default;

// --- what changed

void TCurFit::Change(MarkModified modified) {
  modified_ = modified == MarkModified::Yes;
  Notify();
}

void TCurFit::Notify() const {
  if (on_change_) on_change_();
}

void TCurFit::Edited() {
  ModelChanged();
  Change(MarkModified::Yes);
}

void TCurFit::SetResult(std::shared_ptr<const FitResult> result) {
  last_fit_ = {};
  if (result == nullptr) return;
  last_fit_.record = std::make_shared<const FitRecord>(FitRecord{Settings(), std::move(result)});
}

template <class Held>
void TCurFit::Store(Held& held, const Held& value) {
  if (value == held) return;
  held = value;
  Edited();
}

// --- the model

void TCurFit::SetXVarName(const std::string& name) {
  if (!name.empty()) Store(settings_.XVarName, name);
}

void TCurFit::SetExpression(const std::string& text) {
  if (!text.empty()) Store(settings_.Expression, text);
}

void TCurFit::SetStatus(FitStatus status) {
  if (status == settings_.Status) return;
  settings_.Status = status;
  Notify();
}

void TCurFit::SetProcType(FitProcType type) {
  Store(settings_.ProcType, type);
}

void TCurFit::SetLeftMarginUsed(bool used) {
  Store(settings_.LeftMarginUsed, used);
}

void TCurFit::SetRightMarginUsed(bool used) {
  Store(settings_.RightMarginUsed, used);
}

void TCurFit::SetLeftMargin(double x) {
  StoreMargin(settings_.LeftMargin, x, settings_.LeftMarginUsed);
}

void TCurFit::SetRightMargin(double x) {
  StoreMargin(settings_.RightMargin, x, settings_.RightMarginUsed);
}

void TCurFit::StoreMargin(double& margin, double x, bool used) {
  if (SameValue(margin, x)) return;
  margin = x;
  if (used) Edited();
}

void TCurFit::SetNPoints(std::int32_t points) {
  if (points > 0) Store(settings_.NPoints, points);
}

void TCurFit::SetTolerance(double tolerance) {
  if (tolerance > 0) Store(settings_.Tolerance, tolerance);
}

void TCurFit::SetIterMax(std::int32_t iterations) {
  if (iterations > 0) Store(settings_.IterMax, iterations);
}

// --- parameters and templates

void TCurFit::CheckNameIsFree(const std::string& name) const {
  const std::string lower = LowerAscii(name);
  for (const auto& parameter : params_) {
    if (LowerAscii(parameter->Name()) == lower) {
      throw Error("Parameter \"" + name + "\" Already Defined!");
    }
  }
}

void TCurFit::AddParameter(std::unique_ptr<TDBLParameter> parameter) {
  CheckNameIsFree(parameter->Name());
  parameter->owner_ = this;
  params_.push_back(std::move(parameter));
  Edited();
}

void TCurFit::DeleteParameter(std::int32_t i) {
  if (i < 1 || i > NParams()) return;
  ForgetCompiled();
  params_.erase(params_.begin() + (i - 1));
  Edited();
}

void TCurFit::ClearParameters() {
  ForgetCompiled();
  params_.clear();
  Edited();
}

// Not just the variable of the parameter's name: it may be bound under the name it had before.
void TCurFit::ForgetCompiled() {
  RemoveAllVariables();
  ClearExpressions();
}

void TCurFit::CopyValues(const TCurFit& other) {
  if (other.NParams() != NParams()) return;
  for (std::size_t i = 0; i < params_.size(); ++i) *params_[i]->value_ = other.params_[i]->Value();
  Edited();
}

void TCurFit::AddTemplate(TemplateSettings text) {
  settings_.templates.push_back(std::move(text));
  ModelChanged();
}

void TCurFit::ClearTemplates() {
  settings_.templates.clear();
  ModelChanged();
}

// --- evaluating

void TCurFit::Prepare() {
  ForgetCompiled();
  RestoreBuiltinWords();
  DefineVariable(settings_.XVarName, x_value_.get());
  for (const auto& parameter : params_) {
    DefineVariable(parameter->Name(), parameter->ValuePtr());
  }
  const std::string text = WithTemplates(settings_.Expression, settings_.templates);
  CompileExpression(HasTies() ? WithTies(text, Settings().parameters) : text);
  UpdateTies();
}

bool TCurFit::HasTies() const {
  return std::ranges::any_of(params_, [](const auto& one) { return !one->settings_.Tie.empty(); });
}

void TCurFit::UpdateTies() {
  if (!HasTies()) return;
  std::vector<ParameterSettings> values = Settings().parameters;
  FollowTies(values);
  for (std::size_t i = 0; i < params_.size(); ++i) *params_[i]->value_ = values[i].Value;
}

// A variable takes the place of a built-in word of its name; with the variable gone the word must be known again.
void TCurFit::RestoreBuiltinWords() {
  for (const std::span<const BuiltinWord> table : {BuiltinWords(), AddedWords()}) {
    for (const BuiltinWord& word : table) {
      const TExprWord* const known = WordList().Find(word.name);
      if (known == nullptr || dynamic_cast<const TGeneratedVariable*>(known) != nullptr) {
        WordList().Replace(MakeWord(word));
      }
    }
  }
}

double TCurFit::Value(double x) {
  *x_value_ = x;
  return Evaluate();
}

// --- the model as a value

FitSettings TCurFit::Settings() const {
  FitSettings settings = settings_;
  settings.parameters.reserve(params_.size());
  for (const auto& parameter : params_) settings.parameters.push_back(parameter->Settings());
  return settings;
}

void TCurFit::SetSettings(const FitSettings& settings, MarkModified modified) {
  ForgetCompiled();
  settings_ = settings;
  settings_.parameters.clear();
  AdoptParameters(settings.parameters);
  ModelChanged();
  Change(modified);
}

void TCurFit::AdoptParameters(const std::vector<ParameterSettings>& parameters) {
  params_.clear();
  std::unordered_set<std::string> names;
  for (const ParameterSettings& settings : parameters) {
    auto parameter = std::make_unique<TDBLParameter>(settings);
    if (!names.insert(LowerAscii(parameter->Name())).second) continue;
    parameter->owner_ = this;
    params_.push_back(std::move(parameter));
  }
}

}  // namespace tarnwick
