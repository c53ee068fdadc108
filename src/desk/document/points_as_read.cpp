#include "desk/document/points_as_read.h"

#include <algorithm>

#include "data/series/data_series.h"

namespace tarnwick {
namespace {

bool IsOf(const SeriesAsRead& known, TDSInfo source, const std::string& name) {
  source.DataSource = known.source.DataSource;
  source.RelativeSource = known.source.RelativeSource;
  source.GraphFolder = known.source.GraphFolder;
  source.active = known.source.active;
  source.PointsEdited = known.source.PointsEdited;
  source.x_column_index = known.source.x_column_index;
  source.y_column_index = known.source.y_column_index;
  source.x_error_index = known.source.x_error_index;
  source.y_error_index = known.source.y_error_index;
  return known.source == source && (!source.DatasourceInfo.empty() || known.name == name);
}

}  // namespace

void PointsAsRead::Add(const std::vector<PointsOfFile>& read, const GraphState& state) {
  for (const SeriesState& series : state.series) {
    const DataState& data = series.data;
    const auto now = std::ranges::find_if(
        read, [&](const PointsOfFile& points) { return points.points.SharesAllWith(data.points); });
    if (now == read.end()) continue;
    const DataSettings& settings = data.settings;
    LoadReport report = now->report;
    std::erase_if(known_, [&](const SeriesAsRead& known) {
      if (!IsOf(known, settings.source, settings.SeriesName)) return false;
      // A view of the same rows is no other reading.
      if (!report.loaded) report = known.report;
      return true;
    });
    known_.push_back(
        {settings.source, settings.SeriesName, data.points, data.errors, data.id_counter, report});
  }
  for (const auto& child : state.children) Add(read, *child);
}

void PointsAsRead::Came(const TDataSeries& series) {
  const auto found = std::ranges::find_if(known_, [&](const SeriesAsRead& known) {
    return IsOf(known, series.Source(), series.SeriesName());
  });
  if (found == known_.end()) return;
  found->points = series.Points();
  found->errors = series.Errors();
  found->last_id = series.LastId();
}

bool PointsAsRead::Holds(const TDataSeries& series) const {
  const SeriesAsRead* const read = Of(series);
  return read != nullptr && read->points.SharesAllWith(series.Points());
}

const SeriesAsRead* PointsAsRead::Of(const TDataSeries& series) const {
  const auto found = std::ranges::find_if(known_, [&](const SeriesAsRead& known) {
    return IsOf(known, series.Source(), series.SeriesName());
  });
  return found == known_.end() ? nullptr : &*found;
}

}  // namespace tarnwick
