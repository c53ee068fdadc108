// Fields that hold several values each: "2007-01-01,46;51;56,43;45;48" below "Date,NY,SF", the low, the mean and the high of
// each. Knows lines and the marks that part them; no columns.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarnwick {

/// The two marks, the outer one first, that part such lines: a line of words above them holds only the outer, and as often as
/// each of the rows; every row holds both, with as many values in each field as the other rows, several in half of them, the last
/// fields empty at most.
/// Empty where lines are no such rows. Marks are "," and tab around ";".
std::string MarksOfSharedFields(std::span<const std::string_view> lines);

}  // namespace tarnwick
