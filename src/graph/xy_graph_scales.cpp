#include <algorithm>
#include <cmath>

#include "base/error.h"
#include "graph/auto_title.h"
#include "graph/panel_axis.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::array kAxisIds = {AxisId::X, AxisId::Y, AxisId::Y2};

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

void TxyGraph::AssembleTitles() {
  for (const AxisId id : kAxisIds) {
    if (!Axis(id).Look().EnableAutoTitle) continue;
    const std::string title = AutoTitle(*this, id);
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
