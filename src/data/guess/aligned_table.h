// Tables whose columns are told by their places, since fields between blanks are missing or are several words. Knows lines and
// words; decides nothing about names.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "data/guess/table_search.h"

namespace tarnwick {

/// Lines [first, behind) of the lines searched, and where their columns begin, in characters from 0.
struct AlignedTable {
  std::size_t first = 0;
  std::size_t behind = 0;
  std::vector<std::int32_t> cuts;
};

/// The table around `seed`, found by blanks, when its rows stand in columns so plainly that a missing field shows by its place,
/// and cutting them there reads some row otherwise than counting its words does, or finds more rows. Where every row has "+" or
/// "-" alone at one place, both of them, it belongs to the number right behind it. `by_blanks` is the layout
/// of the search.
std::optional<AlignedTable> FindAlignedTable(std::span<const std::string_view> lines,
                                             const TextLayout& by_blanks, const FoundTable& seed);

/// True when a row of `text` has a word that goes over one of the cuts: the columns are not everywhere what they seem.
bool CutsWords(std::string_view text, const TextLayout& by_blanks,
               std::span<const std::int32_t> cuts);

}  // namespace tarnwick
