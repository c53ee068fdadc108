// The texts that show a model to people.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fit/model/curve_fit.h"

namespace tarnwick {

/// All settings, parameters and templates, and what the last evaluation made, line by line. The variables that the expression
/// makes are the parser's: hence not const.
std::vector<std::string> Report(TCurFit& model);
/// A short summary, line by line.
std::vector<std::string> SettingsText(const TCurFit& model);

/// "cf_None" ..., "Unknown".
std::string_view NameOf(FitStatus status);
/// "cfp_Powell" ..., "Unknown".
std::string_view NameOf(FitProcType type);

}  // namespace tarnwick
