// A file opened for import: its supplier, its layout, its columns. Knows the guess and the user's word over it; knows no
// DataSet.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/data_supplier.h"
#include "data/ds_info.h"
#include "data/guess/format_guess.h"

namespace tarnwick {

struct ImportSource {
  TDSInfo info;  ///< everything but the columns and their formats; active
  std::unique_ptr<TDataSupplier> supplier;
  std::vector<ColumnGuess> columns;  ///< one per column name
  /// Texts of the first rows by columns, as many rows in each; empty for sources that are no text.
  std::vector<std::vector<std::string>> samples;
  ColumnGuess time;                        ///< of kJoinedTimeColumn
  std::vector<std::int32_t> time_columns;  ///< that make it; empty where there is none
  std::vector<std::string> notes;  ///< what was decided about the layout, as of ImportResult
  std::optional<std::int32_t>
      other_table;                 ///< header lines with which another table that is told is read
  std::int64_t left_out_from = 0;  ///< the line behind the table, where others follow; 0: none
  std::string thinning_note;       ///< which rows the source itself picks; empty: none

  /// The column that the user names. Throws FileError when there is none.
  std::int32_t Column(std::string_view name) const;
  /// What finds the column again: its name, or "#N" where another column has that name too.
  std::string ReferenceTo(std::int32_t column) const;
  /// The name to show.
  std::string NameOf(std::int32_t column) const;
  /// The name as notes write it.
  std::string Quoted(std::int32_t column) const { return '"' + NameOf(column) + '"'; }
  /// What is known of a column, kRowNumberColumn and kJoinedTimeColumn among them.
  const ColumnGuess& GuessOf(std::int32_t column) const;
  /// Columns that hold numbers, in order.
  std::vector<std::int32_t> NumberColumns() const;

 private:
  ColumnGuess row_numbers_ = {.has_numbers = true};
};

}  // namespace tarnwick
