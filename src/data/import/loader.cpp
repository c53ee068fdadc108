#include "data/import/loader.h"

#include <string>
#include <utility>

#include "data/import/load_run.h"
#include "data/import/source_place.h"
#include "data/import/table_end.h"
#include "data/packed/unpack.h"

namespace tarnwick {
namespace {

/// The kind of a DataSet whose source can be read again, else null.
const SourceKind* KindToReload(SourceKinds kinds, const TDataSeries& series) {
  const TDSInfo& info = series.Source();
  const SourceKind* const kind = FindSourceKind(kinds, info.DataSource);
  return kind != nullptr && kind->open != nullptr && !info.DatasourceInfo.empty() ? kind : nullptr;
}

struct OpenedAgain {
  std::unique_ptr<TDataSupplier> supplier;  ///< null when the user cancelled
  TableEnd end;                             ///< where it was looked for
};

/// `info`: the DataSet's, with the place where its source lies now. Its table ends as what is opened does.
OpenedAgain OpenAgain(const SourceKind& kind, const TDataSeries& series, TDSInfo& info,
                      const LoadOptions& options) {
  NoProgress unseen;
  OpenedAgain opened;
  try {
    if (info.TableEndSought) {
      opened.end = FindTableEnd(series, options);
      info.TableLines = opened.end.lines;
    }
    opened.supplier = kind.open(info, options.progress != nullptr ? *options.progress : unseen);
  } catch (const UnpackingCancelled&) {
    opened.supplier.reset();
  }
  return opened;
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
    const OpenedAgain again = OpenAgain(*kind, *all[first], opened, options);
    if (!again.supplier) {
      for (const std::size_t i : group) reports[i].cancelled = true;
      break;
    }
    for (TDataSeries* const one : series) {
      TDSInfo& source = one->Source();
      source.DatasourceInfo = opened.DatasourceInfo;
      source.TableLines = opened.TableLines;
      source.active = true;
      source.x_column_index = source.y_column_index = -1;
      source.y_error_index = source.x_error_index = -1;
    }
    const std::vector<LoadReport> loaded =
        series.size() == 1 ? std::vector{LoadDataSet(*series[0], *again.supplier, options)}
                           : LoadShared(series, *again.supplier, options);
    for (std::size_t i = 0; i < group.size(); ++i) {
      reports[group[i]] = loaded[i];
      reports[group[i]].left_out_from = again.end.left_out_from;
      if (opened.DatasourceInfo != named) reports[group[i]].found_at = SourcePlace(opened).string();
    }
  }
  return reports;
}

}  // namespace tarnwick
