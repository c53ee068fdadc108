// Which columns of a table are its time, by their names and by what a sample of their rows holds. Knows no lines and no files.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/ds_info.h"
#include "data/fields/joined_time.h"

namespace tarnwick {

/// Columns that make a time together.
struct JoinedTimeFound {
  std::vector<TimePart> parts;
  std::vector<std::size_t> columns;  ///< positions, one of each part
  ColumnFormat date_format = ColumnFormat::DateTime;
};

/// The first columns that make a time together: date and time, or year, month, day, hour and so on in neighbouring columns; or
/// one column of dates written as eight and more digits, which else were numbers. `columns` holds the same rows of each column
/// (without markers); `names` may be fewer. Names decide where nine of ten rows give a time; without names the values
/// do, when all rows give times that rise from row to row. Dates in other forms that stand alone are not looked for.
std::optional<JoinedTimeFound> FindJoinedTime(
    std::span<const std::string> names, std::span<const std::vector<std::string_view>> columns);

/// UnixSeconds or UnixMilliseconds when a column of this name holds such times: the name says time and all values lie in
/// 1971 to 2100; or there is no name, or one that a time may have ("date", "t"), and the values are whole, in 1990 to 2040, rise
/// by at most a month from row to row, and are no round numbers.
std::optional<ColumnFormat> LooksLikeUnixTime(std::string_view name,
                                              std::span<const double> values);

}  // namespace tarnwick
