// What a user says of a file to be imported. Knows no file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "data/columns/error_option.h"
#include "data/ds_info.h"

namespace tarnwick {

/// What the user says about a file; everything left out is guessed (text) or known (binary).
struct ImportOptions {
  std::optional<std::string>
      x_column;  ///< a name or "#N" from 0; default: the first column that holds numbers
  std::vector<std::string>
      y_columns;  ///< one DataSet each; default: every other column that holds numbers
  std::optional<std::int32_t> headers;
  std::optional<std::string> separators;
  std::optional<std::string> markers;
  std::optional<bool> merge_separators;
  std::optional<std::int32_t> width;  ///< given: columns of this many characters
  std::optional<std::string> cuts;    ///< given: where columns begin, as TDSInfo::ColumnCuts
  std::optional<RowChoice> row_choice;
  double row_value1 = 0;
  double row_value2 = 0;
  std::optional<std::int32_t>
      names_line;                     ///< line of the columns' names from 1; kNoNamesLine: none
  std::optional<bool> stacked_names;  ///< the line above that one belongs to the names
  std::optional<std::int32_t> units_line;    ///< line of their units from 1
  std::optional<std::string> comment_marks;  ///< what begins a line that is no row; blanks between
  std::optional<std::string> missing;        ///< what stands for no value; blanks between
  std::optional<std::int32_t> every;         ///< this sampling frequency
  /// The sampling frequency by the number of rows. Without this and `every`: all rows up to kMostWholeRows.
  bool automatic_sampling = false;
  /// The source itself picks the rows that a view shows, where it can; default: beyond kMostWholeRows.
  std::optional<bool> thinned_at_source;
  std::optional<ColumnFormat> x_format;
  std::optional<ColumnFormat> y_format;
  /// Errors of Y: one for each DataSet in their order, or one rule for all; default: columns that look like errors.
  std::vector<ErrorOption> y_errors;
  std::optional<ErrorOption> x_errors;
  std::optional<std::string> x_expression;
  std::optional<std::string> y_expression;
  /// What to read of a file that holds several tables, as TDSInfo::TablePart; empty: the one that looks largest.
  std::string table_part = {};
  /// Rows of several kinds ("Entity,Year,Deaths") stay one DataSet.
  bool whole_table = false;
  double tolerance = 0;
  /// Default: allowed where the file repeats X, unless `tolerance` makes near points one.
  std::optional<bool> duplicates_allowed;

  /// Throws Error when a value cannot be used (a negative number of headers, an unknown row choice, …).
  void Validate() const;
};

}  // namespace tarnwick
