// Models for the tests of models.
#pragma once

#include <memory>
#include <string>

#include "fit/model/parameter.h"

namespace tarnwick {

// Every field away from its default.
inline FitSettings OddSettings() {
  FitSettings s;
  s.XVarName = "t";
  s.Expression = "a*LOR+b";
  s.Status = FitStatus::cf_FinResult;
  s.LeftMarginUsed = true;
  s.LeftMargin = -1.5;
  s.RightMargin = 1.0 / 3;
  s.NPoints = 70000;
  s.CurveShown = false;
  s.CurveColor = Color::FromRgb(1, 2, 3);
  s.CurveStyle = 2;
  s.CurveWidth = 5;
  s.Tolerance = 1e-12;
  s.IterMax = 1000;
  s.ProcType = FitProcType::cfp_Newton;
  s.weighting = {FitWeights::Counts, FitErrors::Scaled, FitLoss::Cauchy, 2.5};
  s.parameters = {
      {"a", 2.5, 0.1, 1e-9, true, true, "Height", "\xC2\xB5V", -1, 3.5, ""},
      {"b", -1e-300, 0, 0, false, false, std::string(300, 'd'), "", -1, 1, "0*a-1E-300"}};
  s.templates = {{"lor", "1/(1+t^2)", "Lorentzian"}};
  return s;
}

inline std::unique_ptr<TDBLParameter> Parameter(const std::string& name, double value = 0) {
  ParameterSettings settings;
  settings.Name = name;
  settings.Value = value;
  return std::make_unique<TDBLParameter>(settings);
}

}  // namespace tarnwick
