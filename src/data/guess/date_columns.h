// Times that columns tell by how they are written, whatever they are called: months in letters, days of eight digits. Knows texts
// of columns and their names; knows no lines.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/guess/time_guess.h"

namespace tarnwick {

/// From the column `first` on, of which `columns` holds the same rows each: "Sep 26 09:33:34 EDT 1999", "26 Sep 1999"; days of
/// six digits ("891101") beside their hours, or one after the other into another month; days of eight digits in several months
/// ("20161130") under any name but a number's, with "093725" beside them; days and times of twelve and fourteen digits. Every row
/// must give a time, and not all the same.
std::optional<JoinedTimeFound> FindWrittenDate(
    std::span<const std::string> names, std::span<const std::vector<std::string_view>> columns,
    std::size_t first);

}  // namespace tarnwick
