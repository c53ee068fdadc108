// Which column a person would plot the others over. Knows the columns of a source, their names and first values.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "data/columns/import_source.h"

namespace tarnwick {

/// The X among these columns of numbers: times first, then what was swept, then the first that varies, never a constant or a
/// count of rows while there is something better; kRowNumberColumn where none gives X.
std::int32_t ChooseX(const ImportSource& source, const std::vector<std::int32_t>& numbers);

/// Neither its name nor the order of its values says that the column is X, or they speak against it: two or three whole values,
/// the number of a person.
bool IsXForWantOfBetter(const ImportSource& source, std::int32_t column);

/// A column that rises in every row and stands ahead of this X, counts of rows apart, or is called what is swept as X is not, or
/// a time where X has no name. None where X is a date or called "x".
std::optional<std::int32_t> RivalOfX(const ImportSource& source, std::int32_t x);

/// The column is called a time and holds whole numbers as long as days are written, which were read as no dates.
bool HoldsUnreadDays(const ImportSource& source, std::int32_t column);

}  // namespace tarnwick
