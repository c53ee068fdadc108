// Rows whose numbers stand between the same words each time: "At t = 0.4  y = 0.98  0.015". Knows lines and fields.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// Such rows, and what parts their fields: blanks, and marks that stand between words and numbers ("t=0.4").
struct WordedTable {
  FoundTable table;
  std::string separators;
};

/// The most rows that hold numbers and words at the same places, some words the same in all of them, and labels where they are
/// not. Nothing where there are few, where too many other lines stand among or around them, or where no number changes but one
/// that counts the rows. `layout` says what comments and markers are.
std::optional<WordedTable> FindWordedTable(std::span<const std::string_view> lines,
                                           const TextLayout& layout);

}  // namespace tarnwick
