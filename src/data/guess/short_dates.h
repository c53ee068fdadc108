// Columns of dates whose years have two digits, in whatever order: "891101", "00/12/16", "071301", "01/87". Knows fields of
// columns; knows no names.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "data/guess/time_guess.h"

namespace tarnwick {

/// The column `first` where every field, of eight rows at least, is a date in the order found and the rows run on. Six digits
/// beside the hours of their days in even steps over several days, or alone mostly a day after the other into another month, or,
/// where they do not rise as numbers, from each row to the next. With "/" between: the year first where nothing else reads all
/// rows in their order; a month and a year where each row is the month after the one before it. Times of three to six digits
/// where they step evenly and the numbers do not.
std::optional<JoinedTimeFound> FindShortDates(
    std::span<const std::vector<std::string_view>> columns, std::size_t first);

}  // namespace tarnwick
