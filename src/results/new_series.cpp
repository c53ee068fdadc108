#include "results/new_series.h"

#include <algorithm>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "graph/all_series.h"
#include "graph/graph_update.h"
#include "graph/series_names.h"
#include "graph/xy_graph.h"
#include "results/second_axis.h"

namespace tarnwick {
namespace {

bool IsLive(const TSeries& series) {
  return series.Source().DataSource == DataSourceKind::Dde;
}

}  // namespace

std::string NameRefusal(const TxyGraph& graph, const std::string& name) {
  if (TrimBlanks(name).empty()) return "The new DataSet needs a name.";
  if (IsNameTaken(graph, name)) return "The graph already has a DataSet \"" + name + "\".";
  return {};
}

TSeries& AddNewSeries(TxyGraph& graph, std::unique_ptr<TSeries> computed, const TSeries& source,
                      const NewSeries& wanted) {
  if (const std::string why = NameRefusal(graph, wanted.name); !why.empty()) throw Error(why);
  computed->SetSeriesName(wanted.name);
  const GraphUpdate update(graph);
  if (wanted.y_axis == AxisId::Y2) ShowSecondAxis(graph);
  TSeries& added = graph.AddSeries(std::move(computed));
  SeriesStyle style = added.Style();
  style.first_axis = wanted.y_axis != AxisId::Y2;
  style.connect_points = source.Style().connect_points;
  style.show_symbols = source.Style().show_symbols;
  style.symbol_size = source.Style().symbol_size;
  style.line_width = source.Style().line_width;
  added.SetStyle(style);
  return added;
}

bool HasLiveSource(const TxyGraph& graph) {
  return std::ranges::any_of(AllSeries(graph), IsLive);
}

std::string LiveSourceText(const TSeries& source) {
  if (!IsLive(source)) return {};
  return "\"" + source.SeriesName() +
         "\" is fed by a live link. What is computed from it stays as it is now.";
}

}  // namespace tarnwick
