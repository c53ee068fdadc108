#include "app/data/data_set_list.h"

#include "desk/document/document.h"
#include "desk/widgets/numbered_caption.h"
#include "desk/widgets/text.h"

namespace tarnwick {

std::vector<MenuItem> DataSetItems(const CommandContext& context, const QFontMetrics& metrics) {
  std::vector<MenuItem> items;
  if (!context.document) return items;
  const TxyGraph& graph = context.document->Graph();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const QString name = ToQt(graph.Series(i).SeriesName()).simplified();
    const auto index = static_cast<std::int32_t>(i);
    items.push_back({.caption = NumberedCaption(i + 1, name, metrics),
                     .hint = QObject::tr("Work on the DataSet %1").arg(name),
                     .checked = index == graph.CurrentSeriesIndex(),
                     .enabled = graph.Series(i).Style().selectable,
                     .run = [index](CommandContext& c) {
                       if (c.document) c.document->Graph().SetCurrentSeriesIndex(index);
                     }});
  }
  return items;
}

}  // namespace tarnwick
