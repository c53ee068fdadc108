// Columns that a source has beside those that it stores: their places and names. Knows no source.
#pragma once

#include <cstdint>
#include <limits>
#include <string_view>

namespace tarnwick {

/// The pseudo column that holds the number of each data row, from 1. It is called kRowNumberName unless the source has
/// a column of that name, and gives X to sources with one column only.
inline constexpr std::int32_t kRowNumberColumn = std::numeric_limits<std::int32_t>::max();
inline constexpr std::string_view kRowNumberName = "Row number";

/// The pseudo column of a source whose description has TimeColumns: the time that these make together.
inline constexpr std::int32_t kJoinedTimeColumn = kRowNumberColumn - 1;
inline constexpr std::string_view kJoinedTimeName = "Date and time";

}  // namespace tarnwick
