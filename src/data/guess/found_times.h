// The times that columns make together. Knows fields of columns; decides nothing.
#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "data/guess/time_guess.h"

namespace tarnwick {

/// The times of the rows that all columns of `found` have; nothing where a row gives none.
std::vector<std::optional<double>> TimesOf(const JoinedTimeFound& found,
                                           std::span<const std::vector<std::string_view>> columns);

/// All of them; empty where a row gives none.
std::vector<double> AllTimesOf(const JoinedTimeFound& found,
                               std::span<const std::vector<std::string_view>> columns);

}  // namespace tarnwick
