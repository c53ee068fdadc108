#include "app/fit/fit_outcome.h"

#include "app/fit/fit_work.h"
#include "desk/document/document.h"
#include "results/fit_print.h"
#include "results/fit_series.h"

namespace tarnwick {

void AddResiduals(Document& document) {
  const TSeries& source = CurrentDataSet(document);
  document.Edit("Residuals",
                [&](TxyGraph& graph) { AddResiduals(graph, source, ResidualsName(source)); });
}

void AddBands(Document& document, double level) {
  const TSeries& source = CurrentDataSet(document);
  document.Edit("Bands", [&](TxyGraph& graph) { AddBands(graph, source, level); });
}

void PrintFitOnGraph(Document& document) {
  TSeries& series = CurrentDataSet(document);
  document.Edit("Print on Graph", [&](TxyGraph& graph) { PrintFitOnGraph(graph, series); });
}

}  // namespace tarnwick
