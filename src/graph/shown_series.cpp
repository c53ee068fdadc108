#include "graph/shown_series.h"

#include <algorithm>
#include <cstddef>

#include "data/column_caption.h"
#include "graph/all_series.h"
#include "graph/thinning/error_bars.h"
#include "graph/xy_graph.h"

namespace tarnwick {

std::string ShownName(const TSeries& series) {
  const std::string& name = series.SeriesName();
  const std::string& column = series.Source().YDataColumn;
  // "U #3", whose column is known by its place.
  const bool by_place = column.starts_with('#') && name.ends_with(" " + column);
  return name == column || by_place ? CaptionOfY(series.Source(), name) : name;
}

AxisId YAxisOf(const TSeries& series) {
  return series.Style().first_axis ? AxisId::Y : AxisId::Y2;
}

bool IsInPanel(const TSeries& series) {
  return series.Style().in_panel;
}

bool HasPanel(const TxyGraph& graph) {
  return std::ranges::any_of(AllSeries(graph), [&](const TSeries& series) {
    return IsInPanel(series) && series.PointCount() > 0 && IsDrawn(graph, series);
  });
}

AxisScale YScaleOf(const TxyGraph& graph, const TSeries& series) {
  return IsInPanel(series) ? graph.PanelScale() : graph.Axis(YAxisOf(series)).Scale();
}

Extremes ShownExtremes(const TxyGraph& graph, const TSeries& series) {
  const Extremes extremes = series.GetExtremes();
  const ErrorBars* const bars = series.Bars();
  if (bars == nullptr) return extremes;
  const auto kind = [&graph](AxisId axis) {
    return graph.Axis(axis).LogScale() ? AxisKind::Logarithmic : AxisKind::Linear;
  };
  const AxisKind y = IsInPanel(series) ? AxisKind::Linear : kind(YAxisOf(series));
  return WithBars(extremes, *bars, series.Points(), series.GetBaseLine(), kind(AxisId::X), y);
}

bool AxisInUse(const TxyGraph& graph, AxisId axis) {
  for (const TSeries& series : AllSeries(graph)) {
    if (series.PointCount() == 0) continue;
    if (axis == AxisId::X) return true;
    if (series.Style().visible && !IsInPanel(series) && YAxisOf(series) == axis) return true;
  }
  return false;
}

namespace {

bool HoldsMarks(const TxyGraph& graph, MarkStatus status) {
  const auto& marks = graph.Marks().All();
  return graph.GetAppearance().marks_are_shown &&
         std::any_of(marks.begin(), marks.end(),
                     [&](const Mark& mark) { return mark.status == status; });
}

bool IsLeftEmpty(const TxyGraph& graph, AxisId axis) {
  return axis == AxisId::Y && graph.Axis(AxisId::Y2).Look().ShowAxis &&
         AxisInUse(graph, AxisId::Y2) && !AxisInUse(graph, AxisId::Y) &&
         !HoldsMarks(graph, MarkStatus::XAndY);
}

}  // namespace

bool IsAxisShown(const TxyGraph& graph, AxisId axis) {
  return graph.Axis(axis).Look().ShowAxis && !IsLeftEmpty(graph, axis);
}

bool HasGrid(const TxyGraph& graph, AxisId axis) {
  if (IsLeftEmpty(graph, axis)) return false;
  const bool in_place = axis == AxisId::Y2 && IsLeftEmpty(graph, AxisId::Y);
  return graph.Axis(axis).State().Gridlines ||
         (in_place && graph.Axis(AxisId::Y).State().Gridlines);
}

const TSeries* XSource(const TxyGraph& graph) {
  const std::int32_t index = graph.GetAppearance().x_axis_series_index;
  if (index < 0 || static_cast<std::size_t>(index) >= graph.SeriesCount()) return nullptr;
  return &graph.Series(static_cast<std::size_t>(index));
}

bool IsDrawn(const TxyGraph& graph, const TSeries& series) {
  return series.Style().visible && !(graph.PlotsAgainstXSource() && &series == XSource(graph));
}

bool HasPoints(const TxyGraph& graph) {
  return std::ranges::any_of(AllSeries(graph),
                             [](const TSeries& series) { return series.PointCount() > 0; });
}

std::string FitError(const TxyGraph& graph) {
  for (const TSeries& series : AllSeries(graph)) {
    const std::string& error = series.Curve().Error();
    if (!error.empty()) return error;
  }
  return {};
}

}  // namespace tarnwick
