// The parameter of a name. Knows settings only.
#pragma once

#include <string_view>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

/// The parameter called so, capitals not told apart; null where there is none.
ParameterSettings* FindParameter(std::vector<ParameterSettings>& parameters, std::string_view name);
const ParameterSettings* FindParameter(const std::vector<ParameterSettings>& parameters,
                                       std::string_view name);

}  // namespace tarnwick
