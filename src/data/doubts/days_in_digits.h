// Days, months and times of a day written as one whole number. Knows digits only.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// How all these whole numbers read as days or times ("YYMMDD", "HHMM"), eight of them at least, of which several differ; empty
/// where some do not, or where numbers might do by chance. `texts`: how the first of them are written, with their zeros in front.
std::string_view DaysInDigits(std::span<const double> values, std::span<const std::string> texts);

}  // namespace tarnwick
