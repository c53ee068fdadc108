// Lines that name the columns of a table, and lines of their units. Knows how tables are headed; knows no rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/text/text_fields.h"

namespace tarnwick {

/// A line of a comment without its marks and the blanks around them.
std::string_view WithoutCommentMarks(std::string_view line, const TextLayout& layout);

/// A field of a line of names as UTF-8, without markers, at most 255 bytes; blanks stand for control characters.
std::string NameText(std::string_view field, const TextLayout& layout);

/// A line of names as `columns` names, some of them empty, or nothing when it cannot be cut so. The separators of the
/// rows come first; names are often separated otherwise: behind a comment mark, within one pair of quotes, by two blanks,
/// by commas over columns of blanks. One name less than columns leaves the first column, the label of the rows, without.
std::optional<std::vector<std::string>> SplitNames(std::string_view line, const TextLayout& layout,
                                                   std::int32_t columns);

/// Where names and units stand, by lines from 1; 0: there is none.
struct HeaderLines {
  std::int32_t names = 0;
  std::int32_t units = 0;
};

/// The lines of names and units among those above the first row of a table, the nearest last.
HeaderLines FindHeaderLines(std::span<const std::string_view> above, const TextLayout& layout,
                            std::int32_t columns);

/// The unit itself: without brackets around it; empty for what says that there is none ("-", "#", "[]").
std::string UnitText(std::string_view text);

}  // namespace tarnwick
