#include "desk/document/finish_look.h"

#include "desk/document/document.h"
#include "graph/axes/plot_metrics.h"
#include "graph/files/file_kinds.h"
#include "graph/layout/finished_look.h"
#include "graph/layout/second_quantity.h"
#include "graph/shown_series.h"
#include "sources/database/database_source.h"

namespace tarnwick {

void FinishLook(Document& document, QSizeF size) {
  LookOrigin& look = document.Look();
  TxyGraph& graph = document.WholeGraph();
  if (look.own || look.arranged_for == size || !HasPoints(graph)) return;
  // What the user has zoomed into is not disturbed by a window's new size.
  if (!look.arranged_for.isEmpty() && !document.Zooms().Of(std::nullopt).IsEmpty()) return;
  if (look.arranged_for.isEmpty()) SeparateQuantities(graph);
  look.arranged_for = size;
  FinishedLookOptions options;
  options.title = NameOfData(document.Files().DataFileName());
  if (options.title.empty() && graph.SeriesCount() > 0)
    options.title = TitleOfTable(graph.Series(0).Source());
  ApplyFinishedLook(graph, size, TextMetrics(), options);
}

void ArrangeInsertedGraph(Document& document) {
  TxyGraph& graph = document.Graph();
  const QSizeF size(graph.ClientWidth(), graph.ClientHeight());
  SeparateQuantities(graph);
  ApplyFinishedLook(graph, size, TextMetrics());
}

}  // namespace tarnwick
