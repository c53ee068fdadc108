// Many rows of a source at once: what a supplier offers that can read whole columns, and the blocks it hands over. Knows
// no DataSet and no format.
#pragma once

#include <bit>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include "data/ds_info.h"

namespace tarnwick {

/// A column that is wanted, and how its text becomes a number. Never kRowNumberColumn; kJoinedTimeColumn is one.
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

/// Empty lines and remarks between two rows.
struct BlankLines {
  std::int64_t row = 0;  ///< the row behind them, from 0 in its block
  std::int32_t lines = 0;
  bool remark = false;  ///< there is a comment among them
};

/// The values of some neighbouring rows.
struct RowBlock {
  std::string_view text;       ///< where the rows come from a text: their lines, the last one whole
  std::int64_t first_row = 1;  ///< number of its first row behind the headers
  std::int64_t first_line = 0;  ///< lines behind the headers that lie before it
  std::int64_t rows = 0;
  std::int64_t lines = 0;                    ///< rows, comments and blank lines
  std::vector<BlankLines> blanks;            ///< by ascending rows
  BlankLines blanks_behind;                  ///< behind the last row
  std::vector<std::vector<double>> storage;  ///< one column per request; as long as ever needed
  std::vector<char> complete;                ///< per request: 1 when every value of it is a number

  /// The values of one request, one per row.
  std::span<const double> Column(std::size_t request) const {
    return std::span(storage[request]).first(static_cast<std::size_t>(rows));
  }
};

/// Called in the caller's thread with every block in the order of the source; false ends the reading.
using BlockConsumer = std::function<bool(const RowBlock&)>;

/// Reads what a supplier's own operations read, the same values in blocks; the supplier's current row stays where it is.
class BlockSource {
 public:
  virtual ~BlockSource() = default;
  BlockSource(const BlockSource&) = delete;
  BlockSource& operator=(const BlockSource&) = delete;

  /// Rows of the supplier before the first row of the first block.
  virtual std::int32_t HeaderRows() const = 0;
  /// Hands all rows over, on up to `threads` threads (0 = as many as help). What was thrown on any thread is thrown here.
  virtual void ReadBlocks(std::span<const ColumnRequest> requests, int threads,
                          const BlockConsumer& consume) const = 0;
  /// The block's place in the source, in the unit of the supplier's Position().
  virtual std::int64_t PositionOf(const RowBlock& block) const = 0;
  /// The supplier's Line() of a row of the block, from 0.
  virtual std::int64_t LineOf(const RowBlock& block, std::int64_t row) const = 0;

 protected:
  BlockSource() = default;
};

}  // namespace tarnwick
