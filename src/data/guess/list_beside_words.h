// Lists of numbers with words behind each: "3187.74 HeI", "3520.5 NeI, blend with A". Knows lines and words.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// The rows from the first to the last that begin with a number with decimals and hold a word or nothing behind it, parted by
/// blanks: ten at least, words behind nearly all of them, and one other line in ten rows at most. Nothing where no row has more
/// than one word, which may be a unit. `layout` says what comments are.
std::optional<FoundTable> FindListBesideWords(std::span<const std::string_view> lines,
                                              const TextLayout& layout);

}  // namespace tarnwick
