// A model made from a formula alone: which of its names are left to be parameters, and what such a parameter starts with.
// Knows expressions and model settings; no points.
#pragma once

#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

class TCurFit;

/// The names of the model's expression that are neither its variable nor a parameter and get no value by an assignment, as they
/// are typed there, in the order of their first place. `compiled` is the model, prepared.
std::vector<std::string> UnknownNames(TCurFit& compiled);

/// What an unknown name of an expression becomes: varied, from 1.
ParameterSettings MadeParameter(const std::string& name);

/// Makes a parameter of every unknown name, behind the present ones; answers the names. Throws EParserException and Error
/// (TCurFit::Prepare).
std::vector<std::string> MakeParameters(FitSettings& model);

/// "Taken as parameters: a, b and c."
std::string TakenAsParameters(const std::vector<std::string>& names);

}  // namespace tarnwick
