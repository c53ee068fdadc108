// Which lines above a table name its columns and tell their units. Knows how tables are headed; knows no rows.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/names/names_line.h"

namespace tarnwick {

/// Where names and units stand, by lines from 1; 0: there is none.
struct HeaderLines {
  std::int32_t names = 0;
  std::int32_t units = 0;
};

/// The lines of names and units among those above the first row of a table, the nearest last.
HeaderLines FindHeaderLines(std::span<const std::string_view> above, const TextLayout& layout,
                            std::int32_t columns, RowLabels labels = RowLabels::Possible);

}  // namespace tarnwick
