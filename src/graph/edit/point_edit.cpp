#include "graph/edit/point_edit.h"

#include <algorithm>
#include <cmath>
#include <functional>

#include "base/error.h"
#include "data/points/point_columns.h"
#include "graph/read_out.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

void CheckPlace(const PlotPoint& place) {
  if (!std::isfinite(place.x) || !std::isfinite(place.y)) {
    throw Error("A point needs a finite X and Y");
  }
}

double StoredY(const TSeries& series, const PlotPoint& place) {
  const double slope = series.BaseLineSlope();
  return place.y + series.ZeroValue() + (slope == 0 ? 0 : slope * place.x);
}

std::string PairText(const TxyGraph& graph, const TSeries& series, const PlotPoint& place) {
  return ValueText(graph.Axis(AxisId::X), place.x) + ", " +
         ValueText(graph.Axis(YAxisOf(series)), place.y);
}

/// "Voltage.# 3  X,Y: 1, 2"
std::optional<std::string> PointName(const TxyGraph& graph, const TSeries& series,
                                     std::int32_t id) {
  const std::optional<std::size_t> index = IndexOfId(series.Points(), id);
  if (!index) return std::nullopt;
  const Point point = series.Points().At(*index);
  const PlotPoint place{point.x, series.GetBaseLine().CorrectedY(point.x, point.y)};
  const char* caption = YAxisOf(series) == AxisId::Y2 ? "  X,Y2: " : "  X,Y: ";
  return series.SeriesName() + ".# " + std::to_string(id) + caption +
         PairText(graph, series, place);
}

void EraseNear(PointChain& points, double x, double tolerance) {
  const PointChain::Place near = points.LowerPlace(x - tolerance);
  if (near != points.End() && std::abs(points.X(near) - x) <= tolerance) points.Erase(near);
}

/// Edits the points past the rules that place new ones.
void EditPoints(TSeries& series, const std::function<void(DataState&)>& edit) {
  DataState state = series.State();
  edit(state);
  PointsEdited(state);
  series.SetState(state);
}

/// Of that very point; the end when it is gone.
PointChain::Place PlaceOfPoint(const PointChain& points, const Point& point) {
  PointChain::Place place = points.LowerPlace(point.x);
  while (place != points.End() && points.X(place) == point.x && points.At(place).id != point.id) {
    place = points.Next(place);
  }
  return place != points.End() && points.X(place) == point.x ? place : points.End();
}

}  // namespace

std::string DeletePointQuestion(const TxyGraph& graph, const TSeries& series, std::int32_t id) {
  const auto name = PointName(graph, series, id);
  return name ? "Delete Point " + *name + " ?" : std::string();
}

std::string MovePointQuestion(const TxyGraph& graph, const TSeries& series, std::int32_t id,
                              const PlotPoint& to) {
  const auto name = PointName(graph, series, id);
  return name ? "Move Point " + *name + " to " + PairText(graph, series, to) + " ?" : std::string();
}

void CheckMove(const TxyGraph& graph, const TSeries& series, const PlotPoint& to) {
  CheckPlace(to);
  const bool off_x = graph.Axis(AxisId::X).LogScale() && !(to.x > 0);
  const bool off_y = graph.Axis(YAxisOf(series)).LogScale() && !(to.y > 0);
  if (off_x || off_y) throw Error("Can not Move to Negative Values in Log Scale!");
}

bool MovePoint(const TxyGraph& graph, TSeries& series, std::int32_t id, const PlotPoint& to) {
  CheckMove(graph, series, to);
  const std::optional<std::size_t> index = IndexOfId(series.Points(), id);
  if (!index) return false;
  const double y = StoredY(series, to);
  const Point point = series.Points().At(*index);
  if (point.x == to.x && point.y == y) return true;
  EditPoints(series, [&](DataState& state) {
    PointChain& points = state.points;
    points.Erase(points.PlaceOf(*index));
    if (!state.settings.DuplicatesAllowed) {
      EraseNear(points, to.x, state.settings.NumericalTolerance);
    }
    points.Insert(points.LowerPlace(to.x), {id, to.x, y, 0});
  });
  return true;
}

void CheckInsert(const TSeries& series) {
  if (series.Source().DataSource != DataSourceKind::Manual) {
    throw Error("This option is valid only for dataSet with manual source");
  }
}

std::int32_t InsertPoint(TSeries& series, const PlotPoint& at) {
  CheckInsert(series);
  CheckPlace(at);
  const std::int32_t before = series.PointCount();
  if (series.AddPoint(at.x, StoredY(series, at)) > before) return series.State().id_counter;
  return series.Points().At(series.Points().LowerBound(at.x)).id;
}

void DeletePoints(TSeries& series, std::size_t first, std::size_t last) {
  EditPoints(series, [&](DataState& state) {
    // Backwards: a chunk loses its last point at once.
    for (std::size_t i = std::min(last + 1, state.points.Size()); i > first; --i) {
      state.points.Erase(state.points.PlaceOf(i - 1));
    }
  });
}

std::size_t OverwriteY(TSeries& series, std::size_t first, std::span<const double> y) {
  const std::size_t size = series.Points().Size();
  const std::size_t count = first < size ? std::min(y.size(), size - first) : 0;
  EditPoints(series, [&](DataState& state) {
    PointChain::Place place = state.points.PlaceOf(first);
    for (std::size_t i = 0; i < count; ++i) {
      state.points.Set(place, state.points.X(place), y[i]);
      place = state.points.Next(place);
    }
  });
  return count;
}

void PutBack(TSeries& series, std::span<const PointChange> changes, const PointErrors& errors) {
  EditPoints(series, [&](DataState& state) {
    PointChain& points = state.points;
    for (const PointChange& change : changes) {
      if (!change.now) continue;
      const PointChain::Place place = PlaceOfPoint(points, *change.now);
      if (place != points.End()) points.Erase(place);
    }
    for (const PointChange& change : changes) {
      if (!change.was) continue;
      const Point& was = *change.was;
      if (!state.settings.DuplicatesAllowed) {
        EraseNear(points, was.x, state.settings.NumericalTolerance);
      }
      points.Insert(points.LowerPlace(was.x), {was.id, was.x, was.y, 0});
      // Undoing may have made the DataSet one that has not given this id yet.
      state.id_counter = std::max(state.id_counter, was.id);
      state.errors.y_values.Set(was.id, errors.y_values.Of(was.id));
      state.errors.x_values.Set(was.id, errors.x_values.Of(was.id));
    }
  });
}

void PutBackAll(TSeries& series, const PointChain& points, std::int32_t last_id,
                const PointErrors& errors) {
  EditPoints(series, [&](DataState& state) {
    state.points = points;
    state.errors = errors;
    state.id_counter = std::max(state.id_counter, last_id);
  });
}

}  // namespace tarnwick
