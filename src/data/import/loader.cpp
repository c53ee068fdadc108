#include "data/import/loader.h"

#include <string>
#include <utility>

#include "data/import/load_run.h"
#include "data/import/source_place.h"
#include "data/packed/unpack.h"

namespace tarnwick {
namespace {

/// The kind of a DataSet whose source can be read again, else null.
const SourceKind* KindToReload(SourceKinds kinds, const TDataSeries& series) {
  const TDSInfo& info = series.Source();
  const SourceKind* const kind = FindSourceKind(kinds, info.DataSource);
  return kind != nullptr && kind->open != nullptr && !info.DatasourceInfo.empty() ? kind : nullptr;
}

/// Null when the user cancelled.
std::unique_ptr<TDataSupplier> Open(const SourceKind& kind, const TDSInfo& info,
                                    const LoadOptions& options) {
  NoProgress unseen;
  try {
    return kind.open(info, options.progress != nullptr ? *options.progress : unseen);
  } catch (const UnpackingCancelled&) {
    return nullptr;
  }
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
    const SourceKind* const kind = KindToReload(options.kinds, *all[first]);
    if (done[first] || kind == nullptr) continue;
    std::vector<std::size_t> group;
    std::vector<TDataSeries*> series;
    for (std::size_t i = first; i < all.size(); ++i) {
      if (done[i] || !ShareSource(*kind, *all[first], *all[i])) continue;
      group.push_back(i);
      series.push_back(all[i]);
      done[i] = true;
    }
    TDSInfo opened = all[first]->Source();
    const std::string named = std::exchange(opened.DatasourceInfo, PlacedSource(opened));
    const std::unique_ptr<TDataSupplier> supplier = Open(*kind, opened, options);
    if (!supplier) {
      for (const std::size_t i : group) reports[i].cancelled = true;
      break;
    }
    for (TDataSeries* const one : series) {
      TDSInfo& source = one->Source();
      source.DatasourceInfo = opened.DatasourceInfo;
      source.active = true;
      source.x_column_index = source.y_column_index = -1;
      source.y_error_index = source.x_error_index = -1;
    }
    const std::vector<LoadReport> loaded =
        series.size() == 1 ? std::vector{LoadDataSet(*series[0], *supplier, options)}
                           : LoadShared(series, *supplier, options);
    for (std::size_t i = 0; i < group.size(); ++i) {
      reports[group[i]] = loaded[i];
      if (opened.DatasourceInfo != named) reports[group[i]].found_at = SourcePlace(opened).string();
    }
  }
  return reports;
}

}  // namespace tarnwick
