// Lists of numbers as texts that read back exactly, for keys that hold many of them. Knows no keys.
//
// The shortest decimal text of every number, "-" where there is none, a blank between two.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// What is not finite is none.
std::string NumberListText(std::span<const double> numbers);

/// NaN for none. Nothing for a text that is no list of numbers.
std::optional<std::vector<double>> ParseNumberList(std::string_view text);

/// The same of exactly `count` numbers.
std::optional<std::vector<double>> ParseNumberList(std::string_view text, std::size_t count);

}  // namespace tarnwick
