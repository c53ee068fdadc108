// A model made from a formula alone: which of its names are left to be parameters, and what such a parameter starts with.
// Knows expressions and model settings; no points.
#pragma once

#include <span>
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

/// The word that a caption of X begins with, "t" of "t (us)"; empty where it begins with none.
std::string WordOf(const std::string& caption);

/// Where the expression lacks its variable, the first of `names` that it holds: probably what is meant by it. Else empty.
std::string MissedVariable(const FitSettings& model, std::span<const std::string> names);

/// Makes MissedVariable the variable, unless it is a parameter; answers whether it did.
bool ChooseVariable(FitSettings& model, std::span<const std::string> names);

/// "t is taken for the variable, as X is named."
std::string TakenAsVariable(const std::string& name);

/// Whether the curve of several varied parameters is the same at every X: where `text`, the expression as it was compiled, lacks
/// the variable. One parameter alone is a mean.
bool IgnoresX(const FitSettings& model, const std::string& text);

/// "Taken as parameters: a, b and c."
std::string TakenAsParameters(const std::vector<std::string>& names);

}  // namespace tarnwick
