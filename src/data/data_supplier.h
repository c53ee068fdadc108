// The reader of rows and columns over one data source. Knows where values stand and what a column is called; knows no
// DataSet, no row choice and no sampling (those are the loader's).
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "data/block_source.h"
#include "data/ds_info.h"
#include "data/pseudo_columns.h"

namespace tarnwick {

/// What will be read of a source, told beforehand so that one that is far away sends no more.
struct RowPlan {
  std::int32_t x_column = -1;  ///< orders the rows of a source that has no order; -1: nothing does
  std::vector<ColumnRequest> columns;  ///< all that is read, pseudo columns among them, by position
  std::int64_t first = 1;              ///< the first row wanted, as CurrentRow() counts
  std::int64_t every = 1;              ///< from there on one row of so many
  bool operator==(const RowPlan&) const = default;
};

class TDataSupplier {
 public:
  virtual ~TDataSupplier() = default;
  TDataSupplier(const TDataSupplier&) = delete;
  TDataSupplier& operator=(const TDataSupplier&) = delete;

  /// The row the supplier stands on, counted from 1; header rows of a text file count, those already passed do not.
  /// One more than RowCount() at the end.
  virtual std::int32_t CurrentRow() const = 0;
  /// Header rows that lie before row 1 because the supplier itself has read them.
  virtual std::int32_t HeaderRowsPassed() const = 0;
  /// True behind the last row: no value can be read here.
  virtual bool AtEnd() const = 0;
  /// Moves to the next row; true when that is the end.
  virtual bool NextRow() = 0;
  virtual void FirstRow() = 0;
  /// Moves `rows` rows ahead, at most to the end. Nothing happens when `rows` is not positive.
  virtual void SkipRows(std::int32_t rows) = 0;
  /// The finite number at `column` of the current row, or nothing when there is none.
  virtual std::optional<double> ReadValue(std::int32_t column, ColumnFormat format) = 0;
  /// True when the current row has a text (or a stored value) at `column`, readable or not.
  virtual bool HasValue(std::int32_t column) = 0;
  /// What stands at `column` of the current row as people write it; empty for nothing.
  virtual std::string TextAt(std::int32_t column);
  /// Empty lines between the current row and the row before it; where the last move passed several rows, the most that lie
  /// between two of them.
  virtual std::int32_t BlankLinesPassed() const { return 0; }
  /// A comment lies there.
  virtual bool RemarkPassed() const { return false; }
  /// What the last of the comments that lie there calls the columns, all of them; empty where it names none.
  virtual std::vector<std::string> NamesPassed() { return {}; }
  /// True when behind the last row stands the beginning of one that the source does not hold to its end.
  virtual bool EndsIncomplete() const { return false; }
  /// True when the source lost bytes while it was read: what was read since may be zeros.
  virtual bool WasCutShort() const { return false; }
  /// All rows, header rows of a text file among them.
  virtual std::int32_t RowCount() = 0;
  /// The position of a column by its exact name, else by its name without regard to case, else by "#" and its position
  /// from 0; negative when there is no such column.
  virtual std::int32_t ColumnIndex(std::string_view name);
  /// UTF-8, in order.
  virtual const std::vector<std::string>& ColumnNames() = 0;
  /// True when the names come from a line of the source in which no name was missing or a number.
  virtual bool HasNamesLine() = 0;

  /// Told before rows are read, the supplier standing on one up to plan.first. What the plan does not name may be read all the
  /// same, only slower. False: cancelled.
  virtual bool Expect(const RowPlan& plan, Progress& progress);
  /// Until told null: a move that takes long may end once `progress` is cancelled, as if there were no more rows.
  virtual void MoveUnder(Progress* progress);
  /// How many of the first rows surely hold no number of at least `bound` at `column`; 0 where only reading tells.
  virtual std::int64_t RowsBelow(std::int32_t column, ColumnFormat format, double bound,
                                 Progress& progress);
  /// What reads many rows at once, as this supplier's own; null when it cannot.
  virtual const BlockSource* Blocks() const { return nullptr; }
  /// Does beforehand what RowCount() needs, in cancellable steps. False: cancelled.
  virtual bool CountRows(Progress& progress);
  /// The source's size and the current row's place in it, in a unit of the source's own: bytes of text, or records.
  virtual std::int64_t Size() const = 0;
  /// About how many rows there are, by a look at a few places; at most Size(), which is the answer where nothing is known.
  virtual std::int64_t EstimateRows() const { return Size(); }
  virtual std::int64_t Position() const = 0;
  /// The source's own name for messages and progress windows: a file name.
  virtual const std::string& Describe() const = 0;
  /// The current row's place in the source for messages, e.g. "line 12".
  virtual std::string Place() const = 0;
  /// Line of the current row in a text source from 1, else the number of the record.
  virtual std::int64_t Line() const = 0;

 protected:
  TDataSupplier() = default;
};

}  // namespace tarnwick
