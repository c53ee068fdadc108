// One parameter of a model: its value at a fixed address that expressions read, and how it is to be fitted. Knows its
// owner only to tell it of changes.
#pragma once

#include <memory>
#include <string>

#include "base/undefined.h"
#include "fit/model/fit_settings.h"

namespace tarnwick {

class TCurFit;

/// True when setting one for the other changes nothing.
inline bool SameValue(double left, double right) {
  return left == right || (IsUndefined(left) && IsUndefined(right));
}

class TDBLParameter {
 public:
  TDBLParameter() = default;
  /// Without an owner, as stored.
  explicit TDBLParameter(ParameterSettings settings);
  TDBLParameter(const TDBLParameter&) = delete;
  TDBLParameter& operator=(const TDBLParameter&) = delete;

  const std::string& Name() const { return settings_.Name; }
  /// Ignored when equal or empty. Throws Error ("Parameter \"b\" Already Defined!") when the owner has one of that name,
  /// whatever its case; the name is then unchanged.
  void SetName(const std::string& name);
  double Value() const { return *value_; }
  void SetValue(double value);  ///< tells the owner when it differs
  /// The address that expressions read; it stays as long as the parameter lives.
  double* ValuePtr() { return value_.get(); }
  const double* ValuePtr() const { return value_.get(); }
  bool Vary() const { return settings_.Vary; }
  void SetVary(bool vary);  ///< tells the owner when it differs; a tied parameter is never varied

  bool Printed() const { return settings_.Printed; }
  void SetPrinted(bool printed) { settings_.Printed = printed; }

  /// As stored, with the present value; what is not read here stands in it.
  ParameterSettings Settings() const;

 private:
  friend class TCurFit;
  ParameterSettings settings_;  // its Value is not kept up; *value_ is
  std::unique_ptr<double> value_ = std::make_unique<double>(0.0);
  TCurFit* owner_ = nullptr;
};

}  // namespace tarnwick
