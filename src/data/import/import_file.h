// From a file's name to finished DataSets, and to a summary of its columns. Knows the kinds of sources and the
// loader; knows no graph and prints nothing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "data/import/error_option.h"
#include "data/import/load_report.h"
#include "data/import/loader.h"
#include "data/series/data_series.h"

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
  std::optional<std::int32_t> names_line;    ///< line of the columns' names from 1
  std::optional<bool> stacked_names;         ///< the line above that one belongs to the names
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

/// A file opened without a word about sampling is loaded whole up to this many rows.
inline constexpr std::int64_t kMostWholeRows = 20'000'000;

/// Makes the DataSets: graphs pass one that makes their own kind.
using SeriesFactory = std::function<std::unique_ptr<TDataSeries>()>;
std::unique_ptr<TDataSeries> MakeDataSeries();

struct ImportResult {
  std::vector<std::unique_ptr<TDataSeries>>
      series;                       ///< in the order of their columns; loaded, named after them
  std::vector<LoadReport> reports;  ///< one per DataSet
  std::string x_name;               ///< for the axis title
  bool x_is_date = false;           ///< the X axis should show its values as time
  bool y_is_date = false;           ///< so should the Y axis
  /// What was decided about the file that is not certain, one clause each, without a full stop: "the table from line 449 on
  /// is shown, another stands at line 21"; behind it how the batch program has it otherwise: " (--x names another)". Beside what
  /// the reports tell.
  std::vector<std::string> notes;
  std::string errors_note;    ///< a clause more: which columns were taken as errors by themselves
  std::string thinning_note;  ///< and which rows the source itself picked; empty: none
  bool cancelled = false;     ///< also while the file was unpacked: there are no DataSets then
};

/// Reads `path` ("-": standard input) into DataSets that remember how, so that RefreshAll reads them again. Throws
/// FileError (missing, empty, no text, no numbers, no such column) with file, place and reason.
ImportResult ImportFile(const std::filesystem::path& path, const ImportOptions& options = {},
                        const LoadOptions& load = {}, const SeriesFactory& make = MakeDataSeries);

/// The same for a text that is no file's (UTF-8, or what a text file may be): nothing is read again. `name` is for
/// messages.
ImportResult ImportText(std::string text, const std::string& name,
                        const ImportOptions& options = {}, const LoadOptions& load = {},
                        const SeriesFactory& make = MakeDataSeries);

struct ColumnSummary {
  std::int32_t index = 0;
  std::string name;
  std::vector<std::optional<double>>
      values;  ///< of the first five rows; nothing where there is no number
};

struct SourceSummary {
  std::int64_t rows = 0;     ///< data rows, skipped ones among them
  std::int64_t skipped = 0;  ///< rows in which some column that holds numbers cannot be read
  bool names_line = false;
  bool cancelled = false;               ///< the rows were not counted to the end
  std::vector<std::string> notes = {};  ///< as of ImportResult
  std::vector<ColumnSummary> columns;
};

/// What a file holds, read to its end unless `progress` cancels. Throws as ImportFile does, but for columns that do not
/// exist, and UnpackingCancelled.
SourceSummary SummarizeFile(const std::filesystem::path& path, const ImportOptions& options,
                            Progress& progress, SourceKinds kinds = BasicSourceKinds());

}  // namespace tarnwick
