// Which lines above a table name its columns, once the table is found. Knows lines, fields and what was settled; reads no file.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "data/fields/text_fields.h"
#include "data/guess/format_guess.h"

namespace tarnwick {

/// What is known of the table and of the lines around it.
struct TableToName {
  std::span<const std::string_view> lines;  ///< the first of the text
  std::span<const std::string_view> rows;   ///< of the table, as far as they were looked at
  std::int32_t fields = 0;                  ///< of most rows; 0 where there is no table
  const TextLayout& layout;
};

/// Sets the lines of names and units of `format`, whose header lines stand, by what `hints` leave open; and what to tell of names
/// that are more or fewer than the columns.
void GuessNames(const TableToName& table, const GuessHints& hints, TextFormat& format);

}  // namespace tarnwick
