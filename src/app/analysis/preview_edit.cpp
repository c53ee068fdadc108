#include "app/analysis/preview_edit.h"

#include "desk/document/document.h"
#include "graph/graph_update.h"

namespace tarnwick {
namespace {

/// Half way to white.
Color Paled(const Color& color) {
  const auto half = [](int part) { return part + (255 - part) / 2; };
  return Color::FromRgb(half(color.Red()), half(color.Green()), half(color.Blue()));
}

void Pale(TSeries& series) {
  SeriesStyle style = series.Style();
  for (Color* color : {&style.line_color, &style.symbol_color, &style.regression_line_color,
                       &style.model_curve_color})
    *color = Paled(*color);
  series.SetStyle(style);
}

}  // namespace

void PreviewEdit::Show(const std::function<void(TxyGraph&)>& change) {
  Clear();
  edit_.emplace(document_, "Preview");
  TxyGraph& graph = document_.Graph();
  const std::size_t before = graph.SeriesCount();
  try {
    const GraphUpdate update(graph);
    change(graph);
    for (std::size_t i = before; i < graph.SeriesCount(); ++i) Pale(graph.Series(i));
  } catch (...) {
    Clear();
    throw;
  }
}

}  // namespace tarnwick
