#include "desk/document/finish_look.h"

#include "desk/document/document.h"
#include "graph/axes/plot_metrics.h"
#include "graph/files/file_kinds.h"
#include "graph/layout/automatic_legend.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/second_quantity.h"
#include "graph/shown_series.h"
#include "sources/database/database_source.h"

namespace tarnwick {

namespace {

void TellFlatLines(Document& document) {
  const std::string text = FlatLinesText(document.WholeGraph());
  if (text.empty()) return;
  document.Told().Add({{ToldAbout::Guessing, text}});
  emit document.stateChanged();
}

LegendOccasion OccasionOf(const TxyGraph& graph, QSizeF size) {
  return {size, graph.SeriesCount(), AxisInUse(graph, AxisId::Y2)};
}

/// For each size and each number of what it names, and where it has come to hide something: it does not move about while one
/// works on the graph.
void SettleOwnLegend(Document& document, QSizeF size) {
  TxyGraph& graph = document.WholeGraph();
  if (!graph.GetLegend().automatic || !document.Zooms().Of(std::nullopt).IsEmpty()) return;
  const TextMetrics metrics;
  LookOrigin& look = document.Look();
  const LegendOccasion now = OccasionOf(graph, size);
  const bool another = look.settled_for != now;
  const bool hid_before = !another && look.legend_hides;
  look.settled_for = now;
  look.legend_hides = AutomaticLegendHides(graph, size, metrics);
  if (!another && (!look.legend_hides || hid_before)) return;
  SettleLegend(graph, size, metrics);
  look.legend_hides = AutomaticLegendHides(graph, size, metrics);
}

}  // namespace

void FinishLook(Document& document, QSizeF size) {
  LookOrigin& look = document.Look();
  TxyGraph& graph = document.WholeGraph();
  if (!HasPoints(graph)) return;
  if (look.own || look.arranged_for == size) return SettleOwnLegend(document, size);
  // What the user has zoomed into is not disturbed by a window's new size.
  if (!look.arranged_for.isEmpty() && !document.Zooms().Of(std::nullopt).IsEmpty()) return;
  const bool new_data = look.arranged_for.isEmpty();
  if (new_data) SeparateQuantities(graph);
  look.arranged_for = size;
  FinishedLookOptions options;
  // Data that are loaded beside others leave the graph the title it has from those.
  const std::string& title = graph.GetAppearance().title_of_graph;
  if (title.empty() || title == document.Name()) {
    options.title = NameOfData(document.Files().DataFileName());
    if (options.title.empty() && graph.SeriesCount() > 0)
      options.title = TitleOfTable(graph.Series(0).Source());
  }
  ApplyFinishedLook(graph, size, TextMetrics(), options);
  look.settled_for = OccasionOf(graph, size);
  look.legend_hides = AutomaticLegendHides(graph, size, TextMetrics());
  if (new_data) TellFlatLines(document);
}

void ArrangeInsertedGraph(Document& document) {
  TxyGraph& graph = document.Graph();
  const QSizeF size(graph.ClientWidth(), graph.ClientHeight());
  SeparateQuantities(graph);
  ApplyFinishedLook(graph, size, TextMetrics());
}

}  // namespace tarnwick
