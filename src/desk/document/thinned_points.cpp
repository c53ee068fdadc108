#include "desk/document/thinned_points.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "data/points/point_columns.h"
#include "desk/document/document.h"
#include "graph/series_of_whole.h"
#include "sources/database/database_source.h"
#include "sources/database/thinned_columns.h"

namespace tarnwick {
namespace {

void Append(ThinnedRows& to, double x, double y) {
  to.x.push_back(x);
  to.y[0].push_back(y);
}

/// Points outside of a stretch, and rows outside of it, as many together as the whole shows.
ThinnedRows Beside(const PointChain& points, const ThinnedRows& rows, const Stretch& view) {
  const std::vector<double> x = XValues(points), y = YValues(points);
  if (x.empty() && rows.x.empty()) return {.x = {}, .y = {{}}};
  const double low =
      std::min(x.empty() ? rows.x.front() : x.front(), rows.x.empty() ? x.front() : rows.x.front());
  const double high =
      std::max(x.empty() ? rows.x.back() : x.back(), rows.x.empty() ? x.back() : rows.x.back());
  ThinnedColumns columns(low, high, kColumnsOfWhole, 1);
  const auto add = [&](double at, double value) {
    const double row[] = {at, value};
    if (!view.Holds(at)) columns.Add(row);
  };
  for (std::size_t i = 0; i < x.size(); ++i) add(x[i], y[i]);
  for (std::size_t i = 0; i < rows.x.size(); ++i) add(rows.x[i], rows.y[0][i]);
  return columns.Rows();
}

void AddPointsOf(const PointChain& points, const Stretch& view, ThinnedRows& to) {
  const std::vector<double> x = XValues(points), y = YValues(points);
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (view.Holds(x[i])) Append(to, x[i], y[i]);
  }
}

bool Repeats(std::vector<double> x) {
  std::ranges::sort(x);
  return std::ranges::adjacent_find(x) != x.end();
}

}  // namespace

ThinnedRows WithView(const PointChain& points, const ThinnedRows& rows, const Stretch& view) {
  ThinnedRows merged = Beside(points, {.x = {}, .y = {{}}}, view);
  for (std::size_t i = 0; i < rows.x.size(); ++i) Append(merged, rows.x[i], rows.y[0][i]);
  return merged;
}

ThinnedRows WithMoreRows(const PointChain& points, const ThinnedRows& rows, const Stretch& view) {
  ThinnedRows merged = Beside(points, rows, view);
  AddPointsOf(points, view, merged);
  return merged;
}

ThinnedRows WithEveryRow(const PointChain& points, const ThinnedRows& rows, const Stretch& view) {
  ThinnedRows merged = Beside({}, rows, view);
  AddPointsOf(points, view, merged);
  return merged;
}

void ReplacePoints(TSeries& series, const ThinnedRows& rows) {
  std::vector<double> x, y;
  for (std::size_t i = 0; i < rows.x.size(); ++i) {
    if (std::isnan(rows.y[0][i])) continue;
    x.push_back(rows.x[i]);
    y.push_back(rows.y[0][i]);
  }
  const LastFit fitted = series.Fit().Last();
  if (Repeats(x)) series.SetDuplicatesAllowed(true);
  series.BeginUpdate();
  series.Clear();
  series.AddPoints(x, y);
  series.Fit().SetLast(fitted);
  series.EndUpdate();
}

bool WasEdited(const Document& document, const TSeries& series) {
  const SeriesAsRead* const read = document.Files().AsRead().Of(series);
  return series.Source().PointsEdited ||
         (read != nullptr && !read->points.SharesAllWith(series.Points()));
}

void RememberEdits(Document& document) {
  for (TSeries* const series : SeriesOfWhole(document.WholeGraph())) {
    if (IsThinned(series->Source()) && WasEdited(document, *series))
      series->Source().PointsEdited = true;
  }
}

std::string ShownRows(const TSeries& series, std::int64_t picked, std::int64_t rows) {
  const std::string of = std::to_string(rows);
  return picked < rows ? "thinned by the data base: " + std::to_string(picked) + " of " + of +
                             " rows in view of \"" + series.SeriesName() + "\", zooming shows more"
                       : "all " + of + " rows in view of \"" + series.SeriesName() + "\" are shown";
}

}  // namespace tarnwick
