// Runs of integers as short texts, for keys that hold many of them. Knows no keys.
//
// Every number is its difference from the one before (the first from 0), the sign in the lowest bit, in groups of five bits from
// the lowest on, each a letter of A to Z, a to z, 0 to 9, + and /; a group before another one has 32 added. Numbers that rise or
// fall slowly take a letter each.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

std::string NumberRunText(std::span<const std::int32_t> numbers);

/// Nothing for a text that is no run of at most `most` numbers within 32 bits.
std::optional<std::vector<std::int32_t>> ParseNumberRun(std::string_view text, std::size_t most);

}  // namespace tarnwick
