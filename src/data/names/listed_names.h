// Names of columns that comments above a table list, one a line by the column's number: "# 2 FLUX_ISO  Isophotal flux [count]",
// "# Column 3: energy [eV]", or several a line. Knows such lists; knows no rows.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/fields/text_fields.h"

namespace tarnwick {

struct ListedNames {
  std::vector<std::string> names;  ///< one per column; empty for those that the list leaves out
  std::vector<std::string> units;  ///< likewise
};

/// The list among the lines above the first row, for a table of `columns`: numbers from 1 or 0 on that rise, the last one that of
/// the last column unless the names are all of capitals, as identifiers are (some name several columns at once). Nothing
/// where there is none: numbered remarks are no list of names. Where the layout cuts lines at given places, the names of a
/// description of the columns byte by byte that fits them.
std::optional<ListedNames> FindListedNames(std::span<const std::string_view> above,
                                           const TextLayout& layout, std::int32_t columns);

}  // namespace tarnwick
