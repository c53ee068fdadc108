#include "data/import/split_runs.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "data/pseudo_columns.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestPointsOfRun =
    2;  // in the mean: less is a table with an empty line behind every row
constexpr std::size_t kFewRuns = 8;
constexpr std::size_t kFewestPointsOfMany = 4;  // shorter ones are pieces of one curve

constexpr const char* kRunMark = ", run ";

/// What takes one run of what `whole` holds, and always every row of it: where rows are left out, nobody sees where runs begin.
std::unique_ptr<TDataSeries> RunOf(const TDataSeries& whole, std::int32_t run,
                                   const SeriesFactory& make) {
  std::unique_ptr<TDataSeries> series = make();
  DataState state = series->State();
  state.settings = whole.Settings();
  state.errors = {whole.Errors().y, whole.Errors().x, {}, {}};
  state.settings.source.Run = run;
  state.settings.source.AutoRowHitFreq = false;
  state.settings.source.RowSamplingFrequency = 1;
  series->SetState(state);
  series->SetSeriesName(NameOfRun(whole.SeriesName(), run));
  return series;
}

}  // namespace

std::string NameOfRun(const std::string& name, std::int32_t run) {
  return run > 1 ? name + kRunMark + std::to_string(run) : name;
}

std::string NameWithoutRun(const std::string& name, std::int32_t run) {
  const std::string mark = kRunMark + std::to_string(run);
  return name.ends_with(mark) ? name.substr(0, name.size() - mark.size()) : name;
}

namespace {

/// What the row at hand, or the comment right above it, calls the column of each DataSet where it names the columns as the first
/// line of names did, `head` being the place of a name that all such lines share; empty for other rows.
std::vector<std::string> NamesAt(TDataSupplier& supplier, std::size_t head,
                                 const ImportResult& result) {
  const std::string& shared = supplier.ColumnNames()[head];
  const bool row_names = supplier.TextAt(static_cast<std::int32_t>(head)) == shared;
  const std::vector<std::string> above =
      row_names ? std::vector<std::string>() : supplier.NamesPassed();
  if (!row_names && (head >= above.size() || above[head] != shared)) return {};
  std::vector<std::string> names;
  for (const auto& series : result.series) {
    const std::int32_t column = series->Source().y_column_index;
    if (column < 0 || column >= kJoinedTimeColumn) return {};
    names.push_back(row_names ? supplier.TextAt(column) : above[static_cast<std::size_t>(column)]);
  }
  return names;
}

/// Lines of names that come again above each further run, where they do: what stands in them in each DataSet's column.
std::vector<std::vector<std::string>> NamesOfRuns(const ImportResult& result, std::size_t runs,
                                                  TDataSupplier& supplier) {
  constexpr int kMostRows = 200'000;
  std::vector<std::vector<std::string>> names;
  const TDSInfo& first = result.series.front()->Source();
  // Where no column is X, the label of each row may be what the lines of names share.
  const bool has_column = first.x_column_index >= 0 && first.x_column_index < kJoinedTimeColumn;
  const auto head = static_cast<std::size_t>(has_column ? first.x_column_index : 0);
  if (head >= supplier.ColumnNames().size()) return {};
  int rows = 0;
  supplier.FirstRow();
  supplier.SkipRows(first.FileHasHeaders - supplier.HeaderRowsPassed());
  for (supplier.NextRow(); !supplier.AtEnd() && rows < kMostRows; supplier.NextRow(), ++rows) {
    std::vector<std::string> found = NamesAt(supplier, head, result);
    if (!found.empty()) names.push_back(std::move(found));
  }
  return names.size() + 1 == runs ? names : std::vector<std::vector<std::string>>();
}

std::size_t RunsToSplit(const ImportResult& result) {
  std::int32_t runs = 1;
  std::int64_t fewest = 0;
  for (const LoadReport& report : result.reports) {
    runs = std::max(runs, report.runs);
    const std::int64_t points = report.points + report.replaced;
    fewest = fewest == 0 ? points : std::min(fewest, points);
  }
  const auto count = static_cast<std::size_t>(runs);
  const std::size_t least = count > kFewRuns ? kFewestPointsOfMany : kFewestPointsOfRun;
  const bool worth = std::cmp_greater_equal(fewest, count * least);
  const bool few = count <= kMostRuns && count * result.series.size() <= kMostRunDataSets;
  return worth && few ? count : 1;
}

}  // namespace

void SplitRuns(ImportResult& result, TDataSupplier& supplier, const LoadOptions& load,
               const SeriesFactory& make) {
  const std::size_t runs = result.cancelled ? 1 : RunsToSplit(result);
  if (runs < 2) return;
  std::vector<std::unique_ptr<TDataSeries>> split;
  std::vector<TDataSeries*> all;
  const std::vector<std::vector<std::string>> names = NamesOfRuns(result, runs, supplier);
  for (std::size_t number = 0; number < result.series.size(); ++number) {
    const TDataSeries& whole = *result.series[number];
    for (std::size_t run = 1; run <= runs; ++run) {
      split.push_back(RunOf(whole, static_cast<std::int32_t>(run), make));
      all.push_back(split.back().get());
      const std::string name = names.empty() || run == 1 ? "" : names[run - 2][number];
      if (!name.empty() && name != whole.SeriesName()) split.back()->SetSeriesName(name);
    }
  }
  result.reports = LoadShared(all, supplier, load);
  result.series = std::move(split);
  result.cancelled = result.reports.front().cancelled;
  for (TDataSeries* const series : all) {
    if (series->Source().DataSource == DataSourceKind::Manual) series->Source().Run = 0;
  }
}

}  // namespace tarnwick
