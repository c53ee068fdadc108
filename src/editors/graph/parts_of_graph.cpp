#include "editors/graph/parts_of_graph.h"

#include "editors/graph/sections.h"
#include "graph/xy_graph.h"

namespace tarnwick {

bool HasItems(const Page& page) {
  return page.part.kind == GraphPart::Kind::DataSet || page.part.kind == GraphPart::Kind::Mark;
}

std::vector<ListedItem> ItemsOf(const TxyGraph& graph, GraphPart::Kind kind) {
  std::vector<ListedItem> items;
  if (kind == GraphPart::Kind::Mark) {
    for (const Mark& mark : graph.Marks().All()) {
      items.push_back({mark.id, mark.caption, mark.color});
    }
    return items;
  }
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const TSeries& series = graph.Series(i);
    items.push_back({static_cast<std::int32_t>(i), series.SeriesName(), series.Style().line_color});
  }
  return items;
}

bool IsThere(const TxyGraph& graph, GraphPart::Kind kind, std::int32_t id) {
  if (kind == GraphPart::Kind::Mark) return graph.Marks().FindMark(id) != nullptr;
  return kind != GraphPart::Kind::DataSet || static_cast<std::size_t>(id) < graph.SeriesCount();
}

std::optional<FieldValue> CommonValue(const TxyGraph& graph, const PageField& field,
                                      const std::vector<std::int32_t>& ids) {
  const Section& section = SectionOf(field.section);
  std::optional<FieldValue> common;
  for (const std::int32_t id : ids) {
    const FieldValue value = section.get(graph, id, field.row);
    if (common && !SameValue(*common, value)) return std::nullopt;
    common = value;
  }
  return common;
}

}  // namespace tarnwick
