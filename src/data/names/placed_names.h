// Names over columns of blanks, told by the places where they stand. Knows lines; decides nothing about which line it is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

/// How many rows tell where columns stand.
inline constexpr std::size_t kRowsOfPlaces = 8;

/// The names on a line of more words than columns, or of one word less where the first column has none: each word stands over
/// the column with which it shares characters in these rows. Nothing where the rows, parted by blanks, do not stand in columns, a
/// word stands over a gap, or another column is left without.
std::optional<std::vector<std::string>> NamesByPlace(std::string_view line,
                                                     std::span<const std::string_view> rows,
                                                     const TextLayout& layout,
                                                     std::int32_t columns);

}  // namespace tarnwick
