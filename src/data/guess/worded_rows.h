// Rows that say before each number what it is: "Time,0.26,Steps,55". Knows fields.
#pragma once

#include <span>
#include <string_view>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// True where every row has a word and a number in turn, the word the same in all rows, twice at least.
bool NameTheirNumbers(std::span<const std::string_view> rows, const TextLayout& layout);

}  // namespace tarnwick
