// What the names of columns say of time. Knows no values.
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "data/fields/joined_time.h"

namespace tarnwick {

/// The words of a name in small letters, one blank between each two.
std::string NameWords(std::string_view text);

/// True when one of the words sought is among these.
bool HasOneOf(std::string_view words, std::initializer_list<std::string_view> sought);

/// What a name says that its column gives: "DATE (MM/DD/YYYY)" a date, "mm" a month, but minutes behind hours. `before` is
/// the part of the column before.
std::optional<TimePart> TimePartOfName(std::string_view name, std::optional<TimePart> before);

/// True when the column has no name but its position or a number.
bool HasNoName(std::span<const std::string> names, std::size_t column);

}  // namespace tarnwick
