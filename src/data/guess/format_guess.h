// Guesses how a text file is laid out. Knows how tables of numbers are written; knows no DataSet and opens no file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"
#include "data/ds_info.h"
#include "data/guess/column_judge.h"

namespace tarnwick {

/// A table that stands in the text beside the one chosen.
struct OtherTable {
  std::int32_t line = 0;  ///< of its first row, from 1
  std::size_t rows = 0;
};

/// Why columns are cut by their places.
enum class CutsFrom : std::uint8_t {
  Nowhere,      ///< they are not, or the user says so
  Description,  ///< that stands above the rows
  Rows          ///< in which fields are missing
};

/// How a text file is laid out.
struct TextFormat {
  std::string separators = "\t,";
  std::string markers = "'\"";
  bool merge_separators = true;
  bool divide_by_width = false;
  std::int32_t column_width = 10;
  std::string column_cuts;  ///< as TDSInfo::ColumnCuts; empty: not by cuts
  CutsFrom cuts_from = CutsFrom::Nowhere;
  std::int32_t header_lines = 0;  ///< lines before the first row of data
  std::int32_t names_line = 0;    ///< from 1; 0: none was found, or where the rule finds it
  bool stacked_names = false;     ///< the line above belongs to the names as well
  std::int32_t units_line = 0;    ///< from 1; 0: none
  std::int32_t table_lines = 0;   ///< lines of the table behind the headers; 0: to the end
  std::string comment_marks = "# %";
  std::vector<ColumnGuess> columns;
  std::vector<std::vector<std::string>> samples;  ///< texts of the first rows by columns
  std::vector<OtherTable> other_tables;           ///< in order
  std::size_t table_rows = 0;                     ///< rows of the table among the lines looked at
  std::size_t odd_rows = 0;        ///< of these, with another number of fields than most
  std::int32_t left_out_from = 0;  ///< the line behind the table, where other rows follow; 0: none
  std::int32_t values_above = 0;   ///< lines of values right above the rows, taken for headers
  std::int32_t values_from = 0;    ///< the first of them
  std::int32_t columns_there = 0;  ///< where the rows have more columns than are read; else 0
  std::int32_t names_apart = 0;  ///< as many names stand on a line as there are no columns; else 0
  std::int32_t names_apart_line = 0;  ///< that line
  bool has_remarks = false;           ///< behind the values of the rows, which are passed over
  bool is_table = false;              ///< there are rows of values that belong together

  /// Puts the layout into a description; its columns and row choice stay.
  void ApplyTo(TDSInfo& info) const;
};

/// What the user has settled already; the rest is guessed around it.
struct GuessHints {
  std::optional<std::string> separators;
  std::optional<std::string> markers;
  std::optional<bool> merge_separators;
  std::optional<std::int32_t> column_width;  ///< given: fixed width
  std::optional<std::string> column_cuts;    ///< given: cut there, or not by cuts where empty
  std::optional<std::int32_t> header_lines;
  std::optional<std::int32_t> names_line;
  std::optional<bool> stacked_names;
  std::optional<std::int32_t> units_line;
  std::optional<std::string> comment_marks;
};

/// The layout of `text` (UTF-8 or 8-bit without byte order mark): its longest table. Reads as many first lines as it takes
/// to find one, and a few places further on; unless `hints` settle the merging of separators, the whole text is searched
/// for gaps, with progress by bytes, and when that is cancelled the gaps behind that place do not count. A text with no
/// table gives columns that hold what there is, and is_table false.
TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints, Progress& progress);
TextFormat GuessTextFormat(std::string_view text, const GuessHints& hints = {});

}  // namespace tarnwick
