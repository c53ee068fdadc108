// Where the part of a file ends in which its table stands: "[DistMatrix]" to "[QTransMatrix]". Knows lines; knows no fields.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tarnwick {

/// The line, from 0, of the section's mark that ends the section in which a table stands whose headers are the first
/// `header_lines` of `text`. Nothing where no mark in brackets stands among the nearest of these, where no other follows, or
/// where what follows it begins as this section does, or with a row: such sections are parts of one table. Reads up to the mark.
std::optional<std::size_t> FindSectionEnd(std::string_view text, std::size_t header_lines,
                                          char line_end);

}  // namespace tarnwick
