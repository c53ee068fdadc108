// The words that the name of a column is made of. Knows letters; no column.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The words of a name in small letters, cut at what is neither letter nor digit.
std::vector<std::string> WordsOf(std::string_view name);

/// "counts" for "dcounts": the words without the "d" of a difference before them. Empty where there is none, or less than two
/// letters behind it, as in "dt".
std::vector<std::string> WordsBehindD(std::string_view name);

/// "mag", "auto" for "MAGERR_AUTO", "mass" for "e_Mass": the words of what an error so named belongs to. Empty where the name is
/// none.
std::vector<std::string> WordsBesideErr(std::string_view name);

/// True when one of them is known.
bool HasWord(std::string_view name, std::span<const std::string_view> known);

}  // namespace tarnwick
