// What the names of columns say of errors. Knows words only.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// "err", "sigma", …: words that name errors, in small letters.
std::span<const std::string_view> ErrorWords();
/// "standard", "of", "upper": words beside them that name nothing.
bool IsErrorFiller(const std::string& word);
/// "error", "rate": how often something went wrong.
bool CountsErrors(const std::vector<std::string>& words);

/// True for the names that columns of errors have: "err", "sigma", "dy", "+-", …
bool NamesErrors(std::string_view name);
/// "sigma", "sd": such words stand for quantities as well.
bool NamesDoubtfulErrors(std::string_view name);
/// "rel. err", "err %": parts of the values.
bool NamesRelative(std::string_view name);
/// What is left of an error's name: that of what it belongs to, "y" of "dy"; empty where it names nothing.
std::vector<std::string> ValueNamedIn(std::string_view name);
/// How well a column's name is the one that an error is named after: 2 wholly, 1 but for words behind it, such as units, or
/// before it ("set A" and "err A"), 0 not.
int NameMatch(const std::vector<std::string>& after, const std::vector<std::string>& name);
/// What a column of errors is to be called so that the guess takes it as that of the column `name` right before it.
std::string ErrorsHeading(std::string_view name);

}  // namespace tarnwick
