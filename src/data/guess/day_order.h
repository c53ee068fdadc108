// Whether days that read with the month first as well as with the day first go on evenly with the day first. Knows texts of a
// column.
#pragma once

#include <span>
#include <string>

namespace tarnwick {

/// True where the dates go on day by day with the day first, and not with the month first, by which they would be the same day of
/// each month: over more than two rows each, or three dates at least of which that day is not the first ("01/06/2023",
/// "02/06/2023"). True as well where with the day first they are the same day of one month after the other for more than a year.
bool GoOnWithDayFirst(std::span<const std::string> texts);

/// True where each date lies with the day first in the month and year of the date beside it in `others`, whose order is no
/// question ("01/02/2011" beside "Feb-11"), and some with the month first do not; rows that lack either are passed over.
bool AgreeInMonthWithDayFirst(std::span<const std::string> texts,
                              std::span<const std::string> others);

}  // namespace tarnwick
