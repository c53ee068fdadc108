// Where the columns of a text begin, as a setting says it: "1 9 21". Knows no lines.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// The first characters of the columns from 0, or nothing where the text is no list of at most 1000 whole numbers from 1 that
/// rise, with blanks or commas between.
std::optional<std::vector<std::int32_t>> ParseColumnCuts(std::string_view text);

std::string ColumnCutsText(std::span<const std::int32_t> cuts);

}  // namespace tarnwick
