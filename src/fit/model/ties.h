// Parameters that are expressions of others: put into a model's text in their place, and what can be wrong with them and with
// bounds. Knows texts and settings; no result.
#pragma once

#include <string>
#include <vector>

#include "fit/model/fit_settings.h"

namespace tarnwick {

/// `text` with the name of every tied parameter, wherever it stands as a word, replaced by its tie in brackets, ties within ties
/// too. Throws Error when ties go round in a circle or blow the text up beyond reason.
std::string WithTies(const std::string& text, const std::vector<ParameterSettings>& parameters);

/// Gives every tied parameter the value of its tie; undefined where that has none. Throws EParserException, Error,
/// EIntegerDivision.
void FollowTies(std::vector<ParameterSettings>& parameters);

/// One sentence about the first parameter whose bounds or tie cannot hold: bounds crossed, a start outside of them, ties in a
/// circle, a tie that cannot be read or names what is no parameter. Empty when all is well.
std::string LimitTrouble(const std::vector<ParameterSettings>& parameters);

}  // namespace tarnwick
