// What kind of text a field holds, told quickly: what tables are recognised by. Knows the forms of values; knows no lines.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tarnwick {

enum class FieldKind : std::uint8_t {
  Empty,
  Placeholder,  ///< what tables write where a number is missing: "NA", "nan", "-", "null", …
  Number,       ///< in any of the forms of numbers
  Quantity,     ///< a number with a unit behind it, or grouped by blanks
  Date,         ///< a date, a time, or both
  Text
};

/// The kind of a field without its markers; blanks at its ends do not count.
FieldKind KindOfField(std::string_view text);

/// The decimal point of a number's text and what stands behind it: 3 of "1.50", 1 of "2.", 0 without one.
std::size_t LengthFromPoint(std::string_view text);

/// "10d", "5s", "N": how wide a column is and what it holds, as some data bases write below the names.
bool IsColumnWidth(std::string_view text);

/// True for what a column format can read.
constexpr bool IsValue(FieldKind kind) {
  return kind == FieldKind::Number || kind == FieldKind::Quantity || kind == FieldKind::Date;
}

}  // namespace tarnwick
