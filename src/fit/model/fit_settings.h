// A fitting model as plain values: what is stored, copied, compared and undone. Knows no expression engine and no rules;
// TCurFit applies them.
#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "base/color.h"
#include "fit/fit_weighting.h"

namespace tarnwick {

/// What of a model a DataSet shows.
enum class FitStatus : std::uint8_t { cf_None, cf_Function, cf_FinResult, cf_EveryStep };

/// The method that minimises the sum of squares. cfp_SimplexPowell has no name in reports ("Unknown").
enum class FitProcType : std::uint8_t {
  cfp_Powell,
  cfp_Simplex,
  cfp_ConjGrad,
  cfp_Newton,
  cfp_SimplexPowell
};

struct ParameterSettings {
  std::string Name = "P";
  double Value = 0;
  double StartDev = 0.01;
  double FinalDev = 1e-05;
  bool Vary = false;
  bool Printed = false;
  std::string Description = "Parameter P";
  std::string Units;
  double Low = -std::numeric_limits<double>::infinity();  ///< a fit goes no lower
  double High = std::numeric_limits<double>::infinity();  ///< nor higher
  std::string
      Tie;  ///< an expression of other parameters that gives the value; such a parameter is not varied
  bool operator==(const ParameterSettings&) const = default;
};

/// A name that is replaced by a text in the expression before it is compiled.
struct TemplateSettings {
  std::string Name;
  std::string Text;
  std::string Description;
  bool operator==(const TemplateSettings&) const = default;
};

/// Everything of a model that is stored. As constructed: a fresh model.
struct FitSettings {
  std::string XVarName = "x";
  std::string Expression;
  FitStatus Status = FitStatus::cf_None;
  bool LeftMarginUsed = false;
  bool RightMarginUsed = false;
  double LeftMargin = 0;   ///< smallest X fitted
  double RightMargin = 0;  ///< X from which on points are left out
  /// Points of the drawn curve; thins the points fitted, too.
  std::int32_t NPoints = 150;
  bool CurveShown = true;
  Color CurveColor = Color::FromRgb(255, 0, 0);
  std::int32_t CurveStyle = 0;
  std::int32_t CurveWidth = 1;
  double Tolerance = 3e-08;
  std::int32_t IterMax = 200;
  FitProcType ProcType = FitProcType::cfp_Powell;
  FitWeighting weighting;
  std::vector<ParameterSettings> parameters;
  std::vector<TemplateSettings> templates;
  bool operator==(const FitSettings&) const = default;
};

}  // namespace tarnwick
