// Whether a model being edited can be used, and what is the matter with it. Knows models; no widget.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

struct ModelCheck {
  std::string error;                 ///< why it cannot be compiled, with the place; else empty
  bool in_expression = false;        ///< the error is the expression's, not its parameters'
  std::optional<std::size_t> place;  ///< the byte of the expression that the error is about
  std::vector<std::string>
      unknown_names;                  ///< in the expression, neither its variable nor a parameter
  std::string missed_variable;        ///< see MissedVariable
  std::vector<std::string> warnings;  ///< see ExpressionWarnings, and that X is not in it
};

/// An empty expression is in order: the model is not written yet. `x_names`: what may be meant by the variable.
ModelCheck CheckModel(const FitSettings& model, std::span<const std::string> x_names = {});

/// A calculator's answer, or why there is none.
struct Calculation {
  double value = 0;
  std::string error = {};
  bool names_unknown = false;  ///< the error is that names have no value
};

/// `text` at the variable's value `x`, with the names and templates of the model; an empty one stands for the model's expression.
Calculation Calculate(FitSettings model, const std::string& text, double x);

/// The model of a formula, with its unknown names for parameters. The first of `variables`, one at least, that it has is the
/// variable. See StartTypedModel.
FitSettings TypedModel(const std::string& formula, std::span<const std::string> variables,
                       std::size_t points);

/// "P1", "P2" ...: the first that no parameter has.
std::string FreeParameterName(const std::vector<ParameterSettings>& parameters);

}  // namespace tarnwick
