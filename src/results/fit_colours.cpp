#include "results/fit_colours.h"

#include <algorithm>
#include <vector>

#include "graph/all_series.h"
#include "graph/graph_update.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"
#include "results/fit_print.h"
#include "results/fit_series.h"
#include "results/fitted_model.h"

namespace tarnwick {
namespace {

constexpr double kDarker = 0.75;
constexpr int kNearlyBlack = 96;  // the sum of the parts

Color Told(const Color& color) {
  const int sum = color.Red() + color.Green() + color.Blue();
  const auto part = [&](int value) {
    return sum <= kNearlyBlack ? 255 - static_cast<int>(kDarker * (255 - value))
                               : static_cast<int>(kDarker * value);
  };
  return Color::FromRgb(part(color.Red()), part(color.Green()), part(color.Blue()));
}

Color OwnColor(const SeriesStyle& style) {
  return style.show_symbols ? style.symbol_color : style.line_color;
}

}  // namespace

void ColourFitsByDataSet(TxyGraph& graph) {
  std::vector<TSeries*> fitted;
  for (TSeries& series : AllSeries(graph)) {
    if (series.ShowsModelCurve() && !series.Fit().Expression().empty() && IsDrawn(graph, series))
      fitted.push_back(&series);
  }
  if (fitted.size() < 2) return;
  const GraphUpdate update(graph);
  for (TSeries* const series : fitted) {
    const Color before = series->ModelCurveColor();
    if (before != FitSettings().CurveColor) continue;
    FitSettings model = series->Fit().Settings();
    model.CurveColor = Told(OwnColor(series->Style()));
    TakeFitSettings(*series, model);
    RecolourBands(graph, *series, before);
    RecolourPrinted(graph, *series, before);
  }
}

}  // namespace tarnwick
