#include "fit/model/parameter.h"

#include <utility>

#include "fit/model/curve_fit.h"

namespace tarnwick {

TDBLParameter::TDBLParameter(ParameterSettings settings) : settings_(std::move(settings)) {
  if (settings_.Name.empty()) settings_.Name = ParameterSettings().Name;
  if (!settings_.Tie.empty()) settings_.Vary = false;
  *value_ = settings_.Value;
}

void TDBLParameter::SetName(const std::string& name) {
  if (name.empty() || name == settings_.Name) return;
  if (owner_ != nullptr) owner_->CheckNameIsFree(name);
  settings_.Name = name;
  if (owner_ != nullptr) owner_->Edited();
}

void TDBLParameter::SetValue(double value) {
  if (SameValue(value, *value_)) return;
  *value_ = value;
  if (owner_ != nullptr) owner_->Edited();
}

void TDBLParameter::SetVary(bool vary) {
  if (vary == settings_.Vary || !settings_.Tie.empty()) return;
  settings_.Vary = vary;
  if (owner_ != nullptr) owner_->Edited();
}

ParameterSettings TDBLParameter::Settings() const {
  ParameterSettings settings = settings_;
  settings.Value = *value_;
  return settings;
}

}  // namespace tarnwick
