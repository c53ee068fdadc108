#include "data/import/whole_data.h"

#include <algorithm>
#include <optional>

namespace tarnwick {
namespace {

bool FitsWhole(TDataSupplier& supplier, const LoadOptions& load) {
  if (supplier.Size() <= kMostWholeRows) return true;
  // So far below the limit that it takes no count.
  if (supplier.EstimateRows() <= kMostWholeRows / 4 * 3) return true;
  NoProgress unseen;
  Progress& progress = load.progress != nullptr ? *load.progress : unseen;
  return supplier.CountRows(progress) && supplier.RowCount() <= kMostWholeRows;
}

bool RepeatsX(const PointChain& points) {
  std::optional<double> last;
  bool repeats = false;
  points.ForEachChunk([&](const ChunkView& chunk) {
    repeats = repeats || last == chunk.x.front() ||
              std::adjacent_find(chunk.x.begin(), chunk.x.end()) != chunk.x.end();
    last = chunk.x.back();
  });
  return repeats;
}

}  // namespace

void TakeAllRows(TDSInfo& info) {
  info.AllRows = true;
  info.AutoRowHitFreq = false;
  info.RowSamplingFrequency = 1;
}

bool ShowsSomeRows(const TDSInfo& info) {
  // A file that is followed is read from its first row, every one.
  return info.DataSource != DataSourceKind::Manual && !info.DatasourceInfo.empty() &&
         !info.Follow && (info.AllRows ? info.ThinnedAtSource : info.RowSamplingFrequency > 1);
}

std::string SomeRowsText(const TDSInfo& info) {
  if (!ShowsSomeRows(info)) return {};
  if (!info.AllRows) {
    LoadReport sampled;
    sampled.sampled_every = info.RowSamplingFrequency;
    return sampled.ShownText();
  }
  if (info.RowSamplingFrequency > 1)
    return "only about one row in " + std::to_string(info.RowSamplingFrequency) +
           " is there, from all over the table: spikes may be missing";
  return "only the highest and lowest rows are there, which the data base picked";
}

void ChooseSampling(TDSInfo& info, TDataSupplier& supplier, const ImportOptions& options,
                    const LoadOptions& load) {
  if (options.every) {
    info.AutoRowHitFreq = false;
    info.RowSamplingFrequency = *options.every;
  } else if (!options.automatic_sampling && !load.reduced_points && FitsWhole(supplier, load)) {
    TakeAllRows(info);
  }
}

void ForbidAbsentDuplicates(TDataSeries& series) {
  if (!RepeatsX(series.Points())) series.SetDuplicatesAllowed(false);
}

}  // namespace tarnwick
