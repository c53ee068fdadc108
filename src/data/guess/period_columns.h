// Columns of quarters, months or weeks behind their years, "1950:1", "2019-05", told apart by how they count. Knows fields of
// columns; knows no names.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "data/guess/time_guess.h"

namespace tarnwick {

/// The column `first` as years where each field is one and the next ("2000/01"), which else were months; as quarters, months or
/// weeks where every field is a year of four digits and one or two behind a colon or a dash, each row is the one after the row
/// before it, and the year changes behind 4, 12, or 52 and 53. Of months behind a dash, which are dates anyway, nothing is said.
std::optional<JoinedTimeFound> FindPeriods(std::span<const std::vector<std::string_view>> columns,
                                           std::size_t first);

}  // namespace tarnwick
