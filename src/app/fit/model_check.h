// Whether a model being edited can be used, and what is the matter with it. Knows models; no widget.
#pragma once

#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

struct ModelCheck {
  std::string error;  ///< why it cannot be compiled, with the place; else empty
  std::vector<std::string>
      unknown_names;    ///< in the expression, neither its variable nor a parameter
  std::string warning;  ///< of an expression that may mean something else than it looks; else empty
};

/// An empty expression is in order: the model is not written yet.
ModelCheck CheckModel(const FitSettings& model);

/// "P1", "P2" ...: the first that no parameter has.
std::string FreeParameterName(const std::vector<ParameterSettings>& parameters);

}  // namespace tarnwick
