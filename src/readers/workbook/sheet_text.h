// A sheet as lines of text, one a row, cells kept apart by tabs: what the reader of text tables takes. Knows cells; knows no
// kind of workbook.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tarnwick {

/// Rows and columns from 1, both ends within.
struct CellRange {
  std::int64_t first_row = 1;
  std::int64_t last_row = 1 << 20;
  std::int64_t first_column = 1;
  std::int64_t last_column = 1 << 14;
};

/// More no sheet has.
inline constexpr std::int64_t kMostRows = 1 << 20;
inline constexpr std::int64_t kMostSheetColumns = 1 << 14;

class SheetText {
 public:
  /// What lies outside of `range` is left out.
  explicit SheetText(const CellRange& range) : range_(range) {}

  /// Cells come by rising rows, and in a row by rising columns. Throw Error for others, for places beyond a sheet, and for more
  /// text than can be held.
  void AddNumber(std::int64_t row, std::int64_t column, std::string_view text);
  void AddText(std::int64_t row, std::int64_t column, std::string_view text);
  /// A cell whose formula has no result: it has no value.
  void AddError(std::int64_t row, std::int64_t column);

  /// Numbers that were written as texts among them.
  std::int64_t Numbers() const { return numbers_; }
  std::int64_t Errors() const { return errors_; }
  /// Line N is row N of the sheet. The empty columns before the first cell of all are left out; rows with cells have as many
  /// fields as the longest one of their table, others are empty.
  std::string Lines() const;

 private:
  bool Reach(std::int64_t row, std::int64_t column);
  void Append(std::string_view text);

  CellRange range_;
  std::string lines_;     // every cell with the tabs before it, rows without what is empty behind
  std::int64_t row_ = 1;  // that lines_ ends in
  std::int64_t column_ = 0;      // the same, of the range, 0 before the first cell
  std::int64_t source_row_ = 0;  // of the sheet, whether inside or not
  std::int64_t source_column_ = 0;
  std::int64_t left_ = kMostSheetColumns;  // the first column with a cell
  std::int64_t numbers_ = 0;
  std::int64_t errors_ = 0;
};

}  // namespace tarnwick
