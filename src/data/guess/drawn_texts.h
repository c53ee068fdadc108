// Texts whose lines hold numbers beside what is drawn of them: curves in characters, shapes of a picture. Knows lines only.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>

namespace tarnwick {

/// " 8.5  |    .    *    .   |": a number and a curve drawn in characters, on as many lines as a table of `rows` has rows, or
/// half of these.
bool DrawCurve(std::span<const std::string_view> lines, std::size_t rows);

/// "polygon(1015.75,1008.5,1025.75)": half of the lines are words with numbers in parentheses, now so many and now others.
bool ListShapes(std::span<const std::string_view> lines);

}  // namespace tarnwick
