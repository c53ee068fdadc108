// What stands around every row: "[1, 2, 3],", "1 2;" or "1: 2". Knows lines; knows no tables.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace tarnwick {

/// The characters that begin and end nearly all lines of numbers: brackets in pairs, a comma, a semicolon or "\\" at the end,
/// a colon behind the first number.
/// They serve as separators beside those that part the fields. Empty where lines have none, or differ.
std::string FrameOfRows(std::span<const std::string_view> lines);

}  // namespace tarnwick
