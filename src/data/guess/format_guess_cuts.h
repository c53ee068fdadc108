// Tables whose columns are told by their places on the line: those that say so themselves, and those whose rows show it. Knows
// lines; decides nothing about names.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "data/guess/table_search.h"

namespace tarnwick {

/// A table among the lines searched and where its columns begin, in characters from 0.
struct CutTable {
  FoundTable table;
  std::vector<std::int32_t> cuts;
};

/// The table that stands below a description of its columns byte by byte, if its rows are as described. `layout` says what
/// comments are.
std::optional<CutTable> FindDescribedTable(std::span<const std::string_view> lines,
                                           const TextLayout& layout);

/// The table below lines of names, units and the like whose bars stand at the same places ("|Filter |LamEff |"), above rows that
/// have blanks there.
std::optional<CutTable> FindBarredTable(std::span<const std::string_view> lines,
                                        const TextLayout& layout);

/// The table around the heaviest of `tables`, found by blanks in the first lines of `text`, if fields are missing from it that
/// only their places tell. Reads the text to its end where there is one.
std::optional<CutTable> FindGappedTable(std::span<const std::string_view> lines,
                                        std::string_view text, const TextLayout& by_blanks,
                                        std::span<const FoundTable> tables);

}  // namespace tarnwick
