#include <algorithm>
#include <cmath>

#include "base/ascii.h"
#include "base/error.h"
#include "data/column_caption.h"
#include "graph/panel_axis.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::array kAxisIds = {AxisId::X, AxisId::Y, AxisId::Y2};

/// Names in an automatic title; what more are called together is the legend's to tell.
constexpr std::size_t kTitleNames = 3;
constexpr std::string_view kManyNames = "value";

/// Smallest and largest value so far; untouched while `seen` is false.
struct Range {
  double min = 0;
  double max = 0;
  bool seen = false;

  void Add(double low, double high) {
    if (!std::isfinite(low) || !std::isfinite(high)) return;
    min = seen ? std::min(min, low) : low;
    max = seen ? std::max(max, high) : high;
    seen = true;
  }
};

std::string JoinNames(const std::vector<std::string>& names) {
  if (names.size() > kTitleNames) return std::string(kManyNames);
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : ", ") + name;
  return joined;
}

}  // namespace

void TxyGraph::CollectExtremes() {
  std::array<Range, 3> ranges;
  Range hidden;
  Range panel;
  for (const auto& series : series_) {
    if (series->PointCount() == 0) continue;
    const Extremes extremes = ShownExtremes(*this, *series);
    hidden.Add(extremes.x_min, extremes.x_max);
    if (!series->Style().visible) continue;
    ranges[0].Add(extremes.x_min, extremes.x_max);
    Range& range = IsInPanel(*series) ? panel : ranges[static_cast<std::size_t>(YAxisOf(*series))];
    range.Add(extremes.y_min, extremes.y_max);
  }
  panel_axis_ = PanelAxisFor(panel.min, panel.max);
  // Hidden DataSets count for the X axis when nothing else does, so that showing one again does not jump.
  if (!ranges[0].seen) ranges[0] = hidden;
  for (const AxisId id : kAxisIds) {
    const Range& range = ranges[static_cast<std::size_t>(id)];
    if (range.seen) Axis(id).SetDataExtremes(range.min, range.max);
  }
}

std::string TxyGraph::AutoTitle(AxisId id) const {
  const TDSInfo unnamed;
  if (id == AxisId::X) {
    const TSeries* source = XSource(*this);
    if (source == nullptr) return {};
    if (source->Source().XDataColumn == unnamed.XDataColumn) return {};
    return CaptionOfX(source->Source());
  }
  std::vector<std::string> names;
  for (const auto& series : series_) {
    if (names.size() > kTitleNames) break;
    if (series->PointCount() == 0 || !IsDrawn(*this, *series)) continue;
    if (YAxisOf(*series) != id || IsInPanel(*series)) continue;
    const std::string& column = series->Source().YDataColumn;
    // Of columns with one name the second is known by its place.
    const bool by_place = column.size() > 1 && column[0] == '#' && IsDigit(column[1]);
    const bool by_name = column.empty() || by_place || column == unnamed.YDataColumn;
    const std::string name = CaptionOfY(series->Source(), by_name ? series->SeriesName() : column);
    if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end()) {
      names.push_back(name);
    }
  }
  return JoinNames(names);
}

void TxyGraph::AssembleTitles() {
  for (const AxisId id : kAxisIds) {
    if (!Axis(id).Look().EnableAutoTitle) continue;
    const std::string title = AutoTitle(id);
    if (!title.empty() && title != Axis(id).Look().Title)
      SetLook(Axis(id), &AxisLook::Title, title);
  }
}

void TxyGraph::UpdateScales() {
  if (updates_ > 0 || scaling_) return;
  // Axes tell their owner about every value they compute; those calls must not start another round.
  scaling_ = true;
  scale_error_.clear();
  has_panel_ = HasPanel(*this);
  AssembleTitles();
  CollectExtremes();
  for (const AxisId id : kAxisIds) {
    try {
      Axis(id).UpdateScale();
      Axis(id).CalcScale();
    } catch (const Error& error) {
      if (scale_error_.empty()) scale_error_ = error.what();
    }
  }
  scaling_ = false;
  for (const auto& series : series_) UpdateModelCurve(*series);
}

void TxyGraph::UpdateModelCurve(TSeries& series) {
  if (!series.ShowsModelCurve()) {
    series.curve_.Clear();
    return;
  }
  const TAxis& x = Axis(AxisId::X);
  CurveSpan span{x.Min(), x.Max(), x.LogScale() ? CurveSpacing::Geometric : CurveSpacing::Linear};
  // Beyond its data a model says nothing; a single X has no width that it could be drawn over.
  const Extremes data = series.PointCount() > 0 ? series.GetExtremes() : Extremes{};
  if (data.x_min < data.x_max) {
    span.from = std::max(span.from, data.x_min);
    span.to = std::min(span.to, data.x_max);
  }
  const FitSettings model = series.Fit().Settings();
  series.curve_.Update(model, WithinMargins(span, model));
}

}  // namespace tarnwick
