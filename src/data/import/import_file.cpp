#include "data/import/import_file.h"
#include "data/columns/doubtful_columns.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

#include "base/error.h"
#include "data/columns/block_parameter.h"
#include "data/columns/column_roles.h"
#include "data/doubts/column_doubts.h"
#include "data/fields/column_cuts.h"
#include "data/import/load_source.h"
#include "data/import/open_source.h"
#include "data/import/split_groups.h"
#include "data/import/split_runs.h"
#include "data/import/whole_data.h"
#include "data/packed/unpack.h"
#include "data/text/turned_rows.h"

namespace tarnwick {
namespace {

constexpr int kSummaryRows = 5;
constexpr std::int64_t kRecordsPerAdvance = 1 << 16;

bool IsDateFormat(ColumnFormat format) {
  return format == ColumnFormat::DateTime || format == ColumnFormat::DateDayFirst ||
         format == ColumnFormat::DateMonthFirst || format == ColumnFormat::TimeGoingOn;
}

/// The name that finds the column of errors again, and its place.
void DescribeErrors(const ImportSource& source, const ChosenErrors& errors, std::string& name,
                    std::int32_t& index) {
  if (!errors.column) return;
  name = source.ReferenceTo(*errors.column);
  index = *errors.column;
}

/// The name of its column, and its number where an earlier one is called so as well: "y #2".
std::string SeriesNameOf(const ImportSource& source, const ChosenColumns& columns,
                         std::size_t number) {
  const std::string name = source.NameOf(columns.y[number]);
  const auto before = std::span(columns.y).first(number);
  const bool again = std::ranges::any_of(before, [&](std::int32_t other) {
    return other != columns.y[number] && source.NameOf(other) == name;
  });
  return again ? name + " #" + std::to_string(columns.y[number]) : name;
}

void Describe(TDataSeries& series, const ImportSource& source, const ImportOptions& options,
              const ChosenColumns& columns, std::size_t number) {
  const std::int32_t x = columns.XOf(number), y = columns.y[number];
  TDSInfo& info = series.Source();
  info = source.info;
  info.XDataColumn = source.ReferenceTo(x);
  info.YDataColumn = source.ReferenceTo(y);
  info.x_column_index = x;
  info.y_column_index = y;
  info.XFormat = options.x_format.value_or(source.GuessOf(x).format);
  info.YFormat = options.y_format.value_or(source.GuessOf(y).format);
  const ChosenErrors& y_errors = columns.y_errors[number];
  DescribeErrors(source, y_errors, info.YErrorColumn, info.y_error_index);
  DescribeErrors(source, columns.x_errors, info.XErrorColumn, info.x_error_index);
  series.SetErrors({y_errors.rule, columns.x_errors.rule, {}, {}});
  series.SetSeriesName(SeriesNameOf(source, columns, number));
  series.SetNumericalTolerance(options.tolerance);
  series.SetDuplicatesAllowed(options.duplicates_allowed.value_or(options.tolerance == 0));
  if (options.x_expression) series.Source().XColExpr = *options.x_expression;
  if (options.y_expression) series.Source().YColExpr = *options.y_expression;
}

bool IsDate(const ImportSource& source, std::int32_t column, std::optional<ColumnFormat> format) {
  return format ? IsDateFormat(*format) : source.GuessOf(column).is_date;
}

/// A file from which no row could be read is no data file, unless the user asked for rows that it may not have.
void RequirePoints(const ImportResult& result, const ImportOptions& options,
                   const std::string& file) {
  const auto has_points = [](const LoadReport& r) { return r.points > 0; };
  if (result.cancelled || options.row_choice.value_or(RowChoice::All) != RowChoice::All) return;
  if (std::any_of(result.reports.begin(), result.reports.end(), has_points)) return;
  throw FileError("The file holds no row with a number for X and Y", file,
                  result.reports.front().Message());
}

/// Lines of text between blanks, of which some happen to begin with a number, are no table.
void RequireMostRows(const ImportResult& result, const TDSInfo& info, const ImportOptions& options,
                     const std::string& file) {
  constexpr std::int64_t kMostShare = 3, kFewPoints = 10;
  const bool by_blanks = info.TextSeparators.find(' ') != std::string::npos && !TurnsRows(info);
  const bool guessed = !options.x_column && options.y_columns.empty() && !options.headers &&
                       !options.separators && !options.x_format;
  if (result.cancelled || info.DataSource != DataSourceKind::Text || !by_blanks || !guessed) return;
  const auto unread = [](const LoadReport& r) {
    return r.points > 0 && (kMostShare * (r.x_missing + r.x_not_number) > r.rows_read ||
                            kFewPoints * (r.points + r.replaced) < r.rows_read);
  };
  if (!std::ranges::all_of(result.reports, unread)) return;
  throw FileError("The file holds no table of numbers: too many of its lines have none for X or Y",
                  file, result.reports.front().Message());
}

void CountInBlocks(const BlockSource& blocks, std::span<const ColumnRequest> requests,
                   SourceSummary& summary, Progress& progress) {
  blocks.ReadBlocks(requests, 0, [&](const RowBlock& block) {
    summary.rows += block.rows;
    for (std::size_t row = 0; row < static_cast<std::size_t>(block.rows); ++row) {
      const auto unread = [row](const auto& column) { return std::isnan(column[row]); };
      if (std::any_of(block.storage.begin(), block.storage.end(), unread)) ++summary.skipped;
    }
    summary.cancelled = !progress.Advance(blocks.PositionOf(block));
    return !summary.cancelled;
  });
}

void CountRecords(TDataSupplier& records, std::span<const ColumnRequest> requests,
                  SourceSummary& summary, Progress& progress) {
  const auto unread = [&](const ColumnRequest& request) {
    return !records.ReadValue(request.column, request.format);
  };
  for (records.FirstRow(); !records.AtEnd(); records.NextRow()) {
    if (summary.rows % kRecordsPerAdvance == 0 && !progress.Advance(records.Position())) {
      summary.cancelled = true;
      return;
    }
    ++summary.rows;
    if (std::any_of(requests.begin(), requests.end(), unread)) ++summary.skipped;
  }
  if (!records.EndsIncomplete()) return;
  ++summary.rows;
  ++summary.skipped;
}

void CountRows(const ImportSource& source, SourceSummary& summary, Progress& progress) {
  std::vector<ColumnRequest> requests;
  for (const std::int32_t column : source.NumberColumns()) {
    requests.push_back({column, source.GuessOf(column).format});
  }
  progress.Begin("Loading data", source.supplier->Describe(), source.supplier->Size());
  if (const BlockSource* const blocks = source.supplier->Blocks()) {
    CountInBlocks(*blocks, requests, summary, progress);
  } else {
    CountRecords(*source.supplier, requests, summary, progress);
  }
}

Progress& ProgressOf(const LoadOptions& load, Progress& unseen) {
  return load.progress != nullptr ? *load.progress : unseen;
}

}  // namespace

std::unique_ptr<TDataSeries> MakeDataSeries() {
  return std::make_unique<TDataSeries>();
}

ImportResult ImportOpened(ImportSource source, const ImportOptions& options,
                          const LoadOptions& load, const SeriesFactory& make) {
  const ChosenColumns columns = ChooseColumns(source, options);
  ChooseSampling(source.info, *source.supplier, options, load);
  ImportResult result;
  std::vector<TDataSeries*> series;
  for (std::size_t i = 0; i < columns.y.size(); ++i) {
    result.series.push_back(make());
    series.push_back(result.series.back().get());
    Describe(*series.back(), source, options, columns, i);
  }
  result.reports = series.size() == 1
                       ? std::vector{LoadDataSet(*series.front(), *source.supplier, load)}
                       : LoadShared(series, *source.supplier, load);
  const bool asked = options.x_column || !options.y_columns.empty();
  const bool lone = !asked && source.columns.size() > 1 && source.NumberColumns().size() == 1;
  for (LoadReport& report : result.reports) {
    report.lone_column = lone;
    report.left_out_from = source.left_out_from;
    report.x_is_date = IsDate(source, columns.x, options.x_format);
  }
  if (!options.duplicates_allowed) {
    for (TDataSeries* const one : series) ForbidAbsentDuplicates(*one);
  }
  result.x_name = source.NameOf(columns.x);
  result.notes = source.notes;
  result.notes.insert(result.notes.end(), columns.notes.begin(), columns.notes.end());
  const std::vector<std::string> doubts = DoubtsOf(source, options, columns);
  result.notes.insert(result.notes.end(), doubts.begin(), doubts.end());
  result.other_table = source.other_table;
  result.errors_note = columns.errors_note;
  result.thinning_note = source.thinning_note;
  result.x_is_date = IsDate(source, columns.x, options.x_format);
  result.y_is_date = IsDate(source, columns.y.front(), options.y_format);
  result.cancelled = result.reports.front().cancelled;
  RequirePoints(result, options, source.supplier->Describe());
  RequireMostRows(result, source.info, options, source.supplier->Describe());
  const bool whole_rows = !options.row_choice && !options.every;
  const bool by_kind = whole_rows && !options.whole_table;
  // Empty lines may part the blocks of a parameter as well, whose values name them better than "run 2" does.
  const bool by_parameter = by_kind && FindBlockParameter(source, columns.x).has_value();
  if (by_parameter && SplitGroups(result, source, columns, load, make)) return result;
  const std::size_t tables = result.series.size();
  if (whole_rows) SplitRuns(result, *source.supplier, load, make);
  if (by_kind && !by_parameter && result.series.size() == tables) {
    SplitGroups(result, source, columns, load, make);
  }
  // Runs and kinds of rows are told already, and X begins anew in each.
  std::vector<const TDataSeries*> loaded;
  for (const auto& one : result.series) loaded.push_back(one.get());
  if (!result.cancelled && std::ranges::equal(loaded, series)) {
    AddDoubts(DoubtsOfColumns({source, options, columns, loaded}), result.notes);
  }
  return result;
}

ImportResult ImportFile(const std::filesystem::path& path, const ImportOptions& options,
                        const LoadOptions& load, const SeriesFactory& make) {
  NoProgress unseen;
  try {
    return ImportOpened(OpenImportSource(path, options, load.kinds, ProgressOf(load, unseen)),
                        options, load, make);
  } catch (const UnpackingCancelled&) {
    ImportResult nothing;
    nothing.cancelled = true;
    return nothing;
  }
}

ImportResult ImportText(std::string text, const std::string& name, const ImportOptions& options,
                        const LoadOptions& load, const SeriesFactory& make) {
  NoProgress unseen;
  return ImportOpened(TextImportSource(std::move(text), name, options, ProgressOf(load, unseen)),
                      options, load, make);
}

SourceSummary SummarizeFile(const std::filesystem::path& path, const ImportOptions& options,
                            Progress& progress, SourceKinds kinds) {
  return SummarizeOpened(OpenImportSource(path, options, kinds, progress), progress);
}

SourceSummary SummarizeOpened(const ImportSource& source, Progress& progress) {
  TDataSupplier& supplier = *source.supplier;
  SourceSummary summary;
  summary.names_line = supplier.HasNamesLine();
  summary.notes = NotesOf(source);
  if (!source.thinning_note.empty()) summary.notes.push_back(source.thinning_note);
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    summary.columns.push_back({static_cast<std::int32_t>(i), supplier.ColumnNames()[i], {}});
  }
  supplier.FirstRow();
  supplier.SkipRows(source.info.FileHasHeaders - supplier.HeaderRowsPassed());
  for (int row = 0; row < kSummaryRows && !supplier.AtEnd(); ++row, supplier.NextRow()) {
    for (ColumnSummary& column : summary.columns) {
      column.values.push_back(
          supplier.ReadValue(column.index, source.GuessOf(column.index).format));
    }
  }
  CountRows(source, summary, progress);
  return summary;
}

}  // namespace tarnwick
