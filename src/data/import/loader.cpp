#include "data/import/loader.h"

#include <algorithm>
#include <optional>
#include <string>
#include <tuple>

#include "data/import/load_run.h"
#include "data/import/open_supplier.h"

namespace tarnwick {
namespace {

/// What must agree for DataSets to be read from one supplier.
auto SourceKey(const TDataSeries& series) {
  const TDSInfo& info = series.Source();
  return std::tie(info.DatasourceInfo, info.DivideTextByWidth, info.FileHasHeaders,
                  info.TextSeparators, info.TextMarkers, info.ColumnWidth, info.MergeSeparators);
}

bool ReadsFile(const TDataSeries& series) {
  const TDSInfo& info = series.Source();
  const bool file =
      info.DataSource == DataSourceKind::Text || info.DataSource == DataSourceKind::Unformatted;
  return file && !info.DatasourceInfo.empty();
}

}  // namespace

LoadReport LoadDataSet(TDataSeries& series, TDataSupplier& supplier, const LoadOptions& options) {
  TDataSeries* const one[] = {&series};
  LoadRun run(one, supplier, options);
  run.ShowProgress(series.SeriesName() + ", " + supplier.Describe());
  return run.Load().front();
}

std::vector<LoadReport> LoadShared(std::span<TDataSeries* const> all, TDataSupplier& supplier,
                                   const LoadOptions& options) {
  return LoadRun(all, supplier, options).Load();
}

std::vector<LoadReport> RefreshAll(std::span<TDataSeries* const> all, const LoadOptions& options) {
  std::vector<LoadReport> reports(all.size());
  std::vector<bool> done(all.size(), false);
  for (std::size_t first = 0; first < all.size(); ++first) {
    if (done[first] || !ReadsFile(*all[first])) continue;
    std::vector<std::size_t> group;
    std::vector<TDataSeries*> series;
    for (std::size_t i = first; i < all.size(); ++i) {
      if (!ReadsFile(*all[i]) || SourceKey(*all[i]) != SourceKey(*all[first])) continue;
      group.push_back(i);
      series.push_back(all[i]);
      done[i] = true;
    }
    const TDSInfo& info = all[first]->Source();
    const std::unique_ptr<TDataSupplier> supplier = OpenSupplier(info, info.DatasourceInfo);
    for (TDataSeries* const one : series) {
      TDSInfo& source = one->Source();
      source.active = true;
      source.x_column_index = source.y_column_index = -1;
    }
    const std::vector<LoadReport> loaded =
        series.size() == 1 ? std::vector{LoadDataSet(*series[0], *supplier, options)}
                           : LoadShared(series, *supplier, options);
    for (std::size_t i = 0; i < group.size(); ++i) reports[group[i]] = loaded[i];
  }
  return reports;
}

}  // namespace tarnwick
