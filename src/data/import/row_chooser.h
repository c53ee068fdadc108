// Which rows of a source become points: row choice and sampling of one DataSet, row by row. Knows numbers of rows and
// raw values; knows no source and no DataSet.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>

#include "data/ds_info.h"

namespace tarnwick {

enum class RowVerdict {
  Passed,   ///< before the first row taken: not looked at further
  Point,    ///< X and Y make a point
  Skipped,  ///< taken, but X or Y could not be read
  Stopped,  ///< beyond the last row: no point, and no row after it is taken
};

/// Row numbers count from 1 behind the headers.
class RowChooser {
 public:
  static constexpr std::int64_t kNoRow = std::numeric_limits<std::int64_t>::max();

  /// True when the choice cannot be made without the number of rows.
  static bool NeedsRowCount(const TDSInfo& info);

  /// `rows`: number of rows behind the headers, when known. Stores the bound that mode 6 computes and the automatic
  /// sampling frequency in `info`, which must outlive the chooser.
  RowChooser(TDSInfo& info, std::optional<std::int64_t> rows, std::int32_t point_limit);

  /// The next row that it wants to see; kNoRow when no row is wanted any more.
  std::int64_t NextRow() const { return next_; }
  /// Decides over the row NextRow(); NaN stands for a value that could not be read.
  RowVerdict Take(double x, double y);
  /// True while the first row taken is being looked for.
  bool Searching() const { return searching_; }
  /// Notes that the next `rows` rows lie before the first row taken, which Searching() is to say.
  void PassSearched(std::int64_t rows);
  /// The sampling frequency; 1 while the first row is still being looked for.
  std::int32_t Every() const { return every_; }
  /// True when every row from NextRow() on is taken as it comes: no search, no sampling, no bound.
  bool TakesAll() const;
  /// Notes that the next `rows` rows were taken, which only TakesAll() allows.
  void PassTaken(std::int64_t rows) { next_ += rows; }

 private:
  void BeginTaking();
  bool BoundsX() const;
  bool BoundsRows() const;

  TDSInfo& info_;
  std::optional<std::int64_t> rows_left_;
  std::int32_t point_limit_;
  std::int32_t every_ = 1;
  std::int64_t next_ = 1;
  bool searching_ = false;
};

}  // namespace tarnwick
