// Tables most of whose columns hold texts: a name, an address, a note, and some numbers among them. Knows lines and fields.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/table_search.h"

namespace tarnwick {

/// The lines of `layout`, whose separators count each, if nearly all have as many fields, three at least, and two of their
/// columns hold numbers or dates throughout that do not just count the rows. Nothing where there are few, or where blanks part
/// words.
std::optional<FoundTable> FindTableOfTexts(std::span<const std::string_view> lines,
                                           const TextLayout& layout);

}  // namespace tarnwick
