// Reads the values of many neighbouring rows of a text at once. Gives exactly what reading value by value gives, only
// sooner; knows no DataSet and no row choice.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "data/block_source.h"
#include "data/fields/text_fields.h"

namespace tarnwick {

/// The value of one field of the requested column, that may be missing (no field, or blank), as a block stores it.
double BlockValue(std::optional<std::string_view> field, const ColumnRequest& request,
                  const TextLayout& layout, std::string& buffer);

/// What the columns of layout.time make of a line together, as a day number; NaN as BlockValue.
double JoinedTimeValue(std::string_view line, ColumnFormat date_format, const TextLayout& layout);

/// The lines of `text` that begin in [from, to). `from` need not begin a line.
std::string_view LinesBeginningIn(std::string_view text, std::size_t from, std::size_t to,
                                  char line_end);

/// Reads the rows of `lines` into `block`, whose memory is used again.
void ReadRowBlock(std::string_view lines, const TextLayout& layout,
                  std::span<const ColumnRequest> requests, RowBlock& block);

/// The line within a block of text, from 0, on which a row of it stands.
std::int64_t LineInBlock(const RowBlock& block, std::int64_t row, const TextLayout& layout);

}  // namespace tarnwick
