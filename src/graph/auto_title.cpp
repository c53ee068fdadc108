#include "graph/auto_title.h"

#include <algorithm>
#include <cstddef>

#include "base/ascii.h"
#include "data/column_caption.h"
#include "graph/all_series.h"
#include "graph/shown_series.h"
#include "graph/xy_graph.h"

namespace tarnwick {
namespace {

constexpr std::size_t kTitleNames = 3;

std::string TitleOfX(const TxyGraph& graph) {
  const TSeries* source = XSource(graph);
  if (source == nullptr || source->Source().XDataColumn == TDSInfo().XDataColumn) return {};
  return CaptionOfX(source->Source());
}

}  // namespace

std::vector<std::string> NamesOnAxis(const TxyGraph& graph, AxisId id) {
  const TDSInfo unnamed;
  std::vector<std::string> names;
  for (const TSeries& series : AllSeries(graph)) {
    if (names.size() > kTitleNames) break;
    if (series.PointCount() == 0 || !IsDrawn(graph, series)) continue;
    if (YAxisOf(series) != id || IsInPanel(series)) continue;
    const std::string& column = series.Source().YDataColumn;
    // Of columns with one name the second is known by its place.
    const bool by_place = column.size() > 1 && column[0] == '#' && IsDigit(column[1]);
    const bool by_name = column.empty() || by_place || column == unnamed.YDataColumn;
    const std::string name = CaptionOfY(series.Source(), by_name ? series.SeriesName() : column);
    if (!name.empty() && std::find(names.begin(), names.end(), name) == names.end())
      names.push_back(name);
  }
  return names;
}

std::string AutoTitle(const TxyGraph& graph, AxisId id) {
  if (id == AxisId::X) return TitleOfX(graph);
  const std::vector<std::string> names = NamesOnAxis(graph, id);
  if (names.size() > kTitleNames) return std::string(kManyNamesTitle);
  std::string joined;
  for (const std::string& name : names) joined += (joined.empty() ? "" : ", ") + name;
  return joined;
}

}  // namespace tarnwick
