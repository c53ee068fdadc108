#include "desk/document/coarse_first.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "data/import/loader.h"
#include "data/packed/unpack.h"
#include "data/series/data_series.h"
#include "sources/all_source_kinds.h"
#include "sources/database/database_source.h"

namespace tarnwick {
namespace {

/// About one row in so many is a point; 1: every row was read.
std::int32_t RowsOfPoint(const TDataSeries& series, Progress& progress) {
  const std::optional<std::int64_t> rows = CoarseRows(WholeViewOf(series.Source()), progress);
  if (!rows) return 1;
  const std::int64_t of_point = *rows / std::max<std::int64_t>(series.PointCount(), 1);
  return static_cast<std::int32_t>(
      std::clamp<std::int64_t>(of_point, 2, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

bool SettleCoarse(std::span<TDataSeries* const> read, Progress& progress) {
  std::vector<TDataSeries*> again;
  try {
    for (TDataSeries* const series : read) {
      TDSInfo& info = series->Source();
      if (!IsThinned(info)) continue;
      info.RowSamplingFrequency = RowsOfPoint(*series, progress);
      if (!IsCoarse(info) || ShowsRowsAsTheyAre(info)) continue;
      info.RowSamplingFrequency = 1;
      again.push_back(series);
    }
  } catch (const UnpackingCancelled&) {
    return false;
  }
  if (again.empty()) return true;
  LoadOptions load;
  load.progress = &progress;
  load.kinds = AllSourceKinds();
  const std::vector<LoadReport> reports = RefreshAll(again, load);
  return std::ranges::none_of(reports, &LoadReport::cancelled) && !progress.Cancelled();
}

}  // namespace tarnwick
