// Where a DataSet's points come from and how to pick them: the data-source description. A plain value saved with its
// DataSet; knows no file and no reader.
#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

/// Kinds of data source, as stored (key 9 of a DataSet section).
enum class DataSourceKind : std::uint8_t {
  Manual = 0,       ///< points typed, pasted or computed; nothing to re-read
  Text = 1,         ///< delimited or fixed-width text file
  Unformatted = 2,  ///< binary "@Unformatted" data file
  Database = 3,     ///< database table
  Spreadsheet = 4,  ///< workbook with sheets
  Arrays = 5,       ///< file of named arrays
  Lines = 6,        ///< "x<separator>y" lines that a pipe, a socket or a serial port brings
  Dde = 8,          ///< live link
};

/// Which rows of the source are loaded. V1, V2 are RowChoiceValue1 and RowChoiceValue2.
enum class RowChoice : std::int32_t {
  All = 0,
  UntilX = 1,     ///< stop at the first row whose X > V2
  FromX = 2,      ///< start at the first row whose X >= V1
  BetweenX = 3,   ///< both
  FirstRows = 4,  ///< stop after the row whose number exceeds V2
  SkipRows = 5,   ///< skip trunc(V1) rows after the headers
  DropLast = 6,   ///< drop the last V1 rows
};

/// How the text of a column becomes a number.
enum class ColumnFormat : std::uint8_t {
  Automatic = 0,     ///< a number, else a date or time in one of the forms of ParseDay
  Number = 1,        ///< number with "." (or a lone ",") as the decimal separator
  DecimalComma = 2,  ///< number with "," as the decimal separator, "." grouping thousands
  DateTime = 3,      ///< day number from a date, a time or both, year first or day first with dots
  DateDayFirst = 4,  ///< as DateTime, but 03/04/2024 is 3 April
  DateMonthFirst = 5,    ///< as DateTime, but 03/04/2024 is 4 March
  GroupedThousands = 6,  ///< number with "." as the decimal separator, "," grouping thousands
  NumberWithUnit = 7,    ///< number with a unit or "%" behind it: "12.5 mV" is 12.5, "40 %" is 40
  UnixSeconds = 8,       ///< seconds since 1970-01-01 00:00 UTC, as a day number
  UnixMilliseconds = 9,  ///< the same in milliseconds
  TimeGoingOn =
      10,  ///< a time as DateTime; a day is added to those of X wherever they fall back over midnight
  ScaledUnit = 11,  ///< number with a unit, in the unit without prefix: "12 mV" is 0.012
  Uncertainty =
      12,      ///< what stands behind a number as its error: 0.2 of "12.5 ± 0.2", 0.3 of "12.5(3)"
  Factor = 13  ///< number, perhaps with the letter of a factor right behind it: "500.p" is 5e-10
};
inline constexpr ColumnFormat kLastColumnFormat = ColumnFormat::Factor;

/// TDSInfo::NamesLine of a source without names.
inline constexpr std::int32_t kNoNamesLine = -1;

/// The data-source description of one DataSet, with the values of a new one.
struct TDSInfo {
  DataSourceKind DataSource = DataSourceKind::Manual;
  std::string DatasourceInfo;  ///< file name, table or link (UTF-8)
  bool active = false;         ///< loading does nothing while false; never stored
  bool DivideTextByWidth = false;
  std::int32_t FileHasHeaders = 0;  ///< header lines before the first data row
  std::string TextSeparators = "\t,";
  std::string TextMarkers = "'\"";
  std::string XDataColumn = "X Column";
  std::string YDataColumn = "Y Column";
  std::string YErrorColumn;    ///< gives the errors of Y (key 67); empty: none does
  std::string XErrorColumn;    ///< of X (key 68)
  std::string XColExpr = "X";  ///< X of a point from the columns read
  std::string YColExpr = "Y";
  std::int32_t RowSamplingFrequency = 1;  ///< take one row, then skip this many minus one
  bool AutoRowHitFreq = true;             ///< compute RowSamplingFrequency from the row count
  std::int32_t ColumnWidth = 10;          ///< characters per column when DivideTextByWidth
  /// The first character of each column, from 1 and rising, blanks between; empty: columns are divided otherwise (key 81).
  std::string ColumnCuts;
  RowChoice RowChoiceMode = RowChoice::All;
  double RowChoiceValue1 = 0;
  double RowChoiceValue2 = 0;
  ColumnFormat XFormat = ColumnFormat::Automatic;
  ColumnFormat YFormat = ColumnFormat::Automatic;
  bool MergeSeparators =
      true;              ///< a run of separators counts as one (key 48, written only when false)
  bool AllRows = false;  ///< every row, whatever sampling says (key 49, written only when true)
  std::int32_t NamesLine = 0;  ///< line of the columns' names from 1; 0: by rule; -1: none (key 53)
  std::int32_t UnitsLine = 0;  ///< line of their units from 1; 0: none (key 54)
  std::string CommentMarks = "# %";  ///< what begins a line that is no row; blanks between (key 55)
  std::string
      MissingValues;        ///< texts and numbers that stand for no value, blanks between (key 57)
  std::string TimeColumns;  ///< columns that make X together, as JoinedTime reads them (key 58)
  std::int32_t TableLines = 0;  ///< lines of the table behind the headers; 0: to the end (key 59)
  /// TableLines was found in the file, where nobody said it: it is looked for anew whenever the file is read again (key 93,
  /// written only when true).
  bool TableEndSought = false;
  std::string
      RelativeSource;  ///< the file from GraphFolder on, "/" between folders (key 56); empty: not told
  std::string GraphFolder;  ///< of the graph file that told RelativeSource; never stored
  std::int32_t Run = 0;     ///< the only run of the table that is loaded, from 1; 0: all (key 60)
  bool Follow = false;      ///< rows that come later are read as they come (key 82)
  std::int32_t KeepPoints = 0;  ///< of rows that come later the last that are kept; 0: all (key 83)
  /// What is read of a source that holds several tables: sheet and range, or paths of arrays; empty: the first (key 84).
  std::string TablePart;
  /// The source itself picks the rows that a view shows: the highest and lowest of each of its columns (key 85, written only
  /// when true).
  bool ThinnedAtSource = false;
  /// Points of a thinned DataSet were edited since they were read: no rows that a view shows take their place (key 87, written
  /// only when true).
  bool PointsEdited = false;
  /// The line above NamesLine holds the upper words of the names (key 86, written only when true).
  bool StackedNames = false;
  /// Only rows that hold GroupValue (key 89) in this column are loaded (key 88); empty: all.
  std::string GroupColumn;
  std::string GroupValue;
  std::string Recipe;  ///< how computed points were made; empty: they were not (key 77)
  std::int32_t x_column_index = -1;  ///< resolved position, -1 when not yet resolved; never stored
  std::int32_t y_column_index = -1;
  std::int32_t y_error_index = -1;
  std::int32_t x_error_index = -1;

  bool operator==(const TDSInfo&) const = default;
};

}  // namespace tarnwick
