// Reads the values of many neighbouring rows of a text at once. Gives exactly what reading value by value gives, only
// sooner; knows no DataSet and no row choice.
#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/ds_info.h"
#include "data/text/text_fields.h"

namespace tarnwick {

/// A column that is wanted, and how its text becomes a number. Never kRowNumberColumn.
struct ColumnRequest {
  std::int32_t column = 0;
  ColumnFormat format = ColumnFormat::Automatic;
  bool operator==(const ColumnRequest&) const = default;
};

/// Stand in a block for values that are not there. Any other NaN never occurs in a block.
inline constexpr double kMissingValue = std::bit_cast<double>(std::uint64_t{0x7FF8000000000001});
inline constexpr double kNotNumberValue = std::bit_cast<double>(std::uint64_t{0x7FF8000000000002});
inline bool IsMissingValue(double value) {
  return std::bit_cast<std::uint64_t>(value) == std::bit_cast<std::uint64_t>(kMissingValue);
}

/// The value of one field that may be missing (no field, or blank), as a block stores it.
double BlockValue(std::optional<std::string_view> field, ColumnFormat format,
                  const TextLayout& layout, std::string& buffer);

/// The values of the rows of some neighbouring lines.
struct RowBlock {
  std::string_view text;  ///< the lines, the last one whole
  std::int64_t rows = 0;
  std::int64_t lines = 0;                    ///< rows, comments and blank lines
  std::vector<std::vector<double>> storage;  ///< one column per request; as long as ever needed
  std::vector<char> complete;                ///< per request: 1 when every value of it is a number

  /// The values of one request, one per row.
  std::span<const double> Column(std::size_t request) const {
    return std::span(storage[request]).first(static_cast<std::size_t>(rows));
  }
  /// The line within the block, from 0, on which a row of it stands.
  std::int64_t LineOfRow(std::int64_t row, const TextLayout& layout) const;
};

/// The lines of `text` that begin in [from, to). `from` need not begin a line.
std::string_view LinesBeginningIn(std::string_view text, std::size_t from, std::size_t to,
                                  char line_end);

/// Reads the rows of `lines` into `block`, whose memory is used again.
void ReadRowBlock(std::string_view lines, const TextLayout& layout,
                  std::span<const ColumnRequest> requests, RowBlock& block);

}  // namespace tarnwick
