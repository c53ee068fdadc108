#include "sources/streams/append_rows.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "base/undefined.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

/// Points on their way, all of one piece.
struct Piece {
  std::vector<double> x, y, y_errors, x_errors;

  void Clear() {
    for (std::vector<double>* const column : {&x, &y, &y_errors, &x_errors}) column->clear();
  }
};

double Of(const StreamRows& rows, std::optional<std::size_t> column, std::size_t row) {
  if (!column || *column >= rows.y.size()) return kUndefined;
  return rows.y[*column][row];
}

void TakeRow(const StreamRows& rows, const StreamColumns& columns, std::size_t row, Piece& piece) {
  const double x = rows.x[row];
  const double y = Of(rows, columns.y, row);
  if (!std::isfinite(x) || !std::isfinite(y)) return;
  piece.x.push_back(x);
  piece.y.push_back(y);
  if (columns.y_error) piece.y_errors.push_back(Of(rows, columns.y_error, row));
  if (columns.x_error) piece.x_errors.push_back(Of(rows, columns.x_error, row));
}

/// What comes next is a piece of its own.
void BreakLine(TDataSeries& series) {
  if (series.Points().Empty()) return;
  if (series.Gaps().Empty()) series.SetBreakAtGaps(true);
  const std::span<const std::int32_t> known = series.Gaps().Begins();
  std::vector<std::int32_t> begins(known.begin(), known.end());
  const std::int32_t next = series.LastId() + 1;
  if (begins.empty() || begins.back() < next) begins.push_back(next);
  series.SetGaps(PointGaps(std::move(begins), next));
}

/// What came now is of the last piece.
void ExtendPieces(TDataSeries& series) {
  if (series.Gaps().Empty() || series.Gaps().Last() >= series.LastId()) return;
  const std::span<const std::int32_t> begins = series.Gaps().Begins();
  series.SetGaps(PointGaps({begins.begin(), begins.end()}, series.LastId()));
}

/// The chain without its first `count` points in the order of arrival.
PointChain WithoutFirst(const PointChain& points, std::size_t count) {
  PointChain kept = points;
  if (count < points.Size() / 2 && IdsAscend(points)) {
    for (std::size_t i = 0; i < count; ++i) kept.Erase({0, 0, 0});
    return kept;
  }
  std::vector<std::int32_t> ids = Ids(points);
  const auto first = ids.begin() + static_cast<std::ptrdiff_t>(count);
  std::ranges::nth_element(ids, first);
  kept.Clear();
  for (std::size_t i = 0; i < points.Size(); ++i) {
    if (const Point point = points.At(i); point.id >= *first) kept.Append(point);
  }
  return kept;
}

void KeepLast(TDataSeries& series, std::int32_t most) {
  const std::int32_t count = series.PointCount();
  if (most <= 0 || count <= most) return;
  DataState state = series.State();
  state.points = WithoutFirst(state.points, static_cast<std::size_t>(count - most));
  PointsEdited(state);
  series.SetState(state);
}

}  // namespace

void AppendRows(TDataSeries& series, const StreamRows& rows, const StreamColumns& columns) {
  Piece piece;
  const auto flush = [&] {
    series.AddPoints(piece.x, piece.y, {piece.y_errors, piece.x_errors});
    piece.Clear();
  };
  const std::size_t begin = rows.begins.empty() ? 0 : rows.begins.back();
  auto next_break = std::ranges::lower_bound(rows.breaks, begin);
  series.BeginUpdate();
  for (std::size_t row = begin; row < rows.x.size(); ++row) {
    if (next_break != rows.breaks.end() && *next_break <= row) {
      flush();
      BreakLine(series);
      next_break = std::upper_bound(next_break, rows.breaks.end(), row);
    }
    TakeRow(rows, columns, row, piece);
  }
  flush();
  ExtendPieces(series);
  KeepLast(series, series.Source().KeepPoints);
  series.EndUpdate();
}

void ForgetPoints(TDataSeries& series) {
  DataState state = series.State();
  state.points.Clear();
  state.gaps = {};
  state.errors.y_values = state.errors.x_values = {};
  PointsEdited(state);
  series.SetState(state);
}

}  // namespace tarnwick
