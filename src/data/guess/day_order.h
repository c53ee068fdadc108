// Whether days that read with the month first as well as with the day first are days of one month. Knows texts of a column.
#pragma once

#include <span>
#include <string>

namespace tarnwick {

/// True where the dates go on day by day with the day first, and not with the month first, by which they would be the same day of
/// each month: over more than two rows each, or three dates at least of which that day is not the first ("01/06/2023",
/// "02/06/2023").
bool GoOnWithDayFirst(std::span<const std::string> texts);

}  // namespace tarnwick
