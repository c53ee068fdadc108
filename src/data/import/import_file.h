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

#include "data/columns/import_options.h"
#include "data/import/load_report.h"
#include "data/import/loader.h"
#include "data/series/data_series.h"

namespace tarnwick {

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
  std::optional<std::int32_t> other_table;  ///< as of ImportSource
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
