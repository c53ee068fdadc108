#include "app/analysis/series_list.h"

#include "base/error.h"
#include "desk/widgets/names_apart.h"
#include "desk/widgets/text.h"
#include "graph/xy_graph.h"

namespace tarnwick {

QComboBox* NewSeriesList() {
  auto* list = new NameBox;
  list->setObjectName("seriesCombobox");
  list->setAccessibleName(QObject::tr("DataSet"));
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(20);
  return list;
}

void FillSeriesList(QComboBox& list, const TxyGraph& graph) {
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i)
    list.addItem(ToQt(graph.Series(i).SeriesName()));
  list.setCurrentIndex(graph.CurrentSeriesIndex());
}

bool ListsSeriesOf(const QComboBox& list, const TxyGraph& graph) {
  if (static_cast<std::size_t>(list.count()) != graph.SeriesCount() ||
      list.currentIndex() != graph.CurrentSeriesIndex())
    return false;
  for (int i = 0; i < list.count(); ++i) {
    if (list.itemText(i).toStdString() != graph.Series(static_cast<std::size_t>(i)).SeriesName())
      return false;
  }
  return true;
}

QComboBox* MakeSeriesList(const TxyGraph& graph) {
  QComboBox* const list = NewSeriesList();
  FillSeriesList(*list, graph);
  return list;
}

TSeries& ListedSeries(TxyGraph& graph, const QComboBox& list, int line) {
  const auto index = static_cast<std::size_t>(line);
  const bool found = line >= 0 && index < graph.SeriesCount() &&
                     graph.Series(index).SeriesName() == list.itemText(line).toStdString();
  if (!found) throw Error("DataSet Not Found!");
  return graph.Series(index);
}

TSeries& ChosenSeries(TxyGraph& graph, const QComboBox& list) {
  return ListedSeries(graph, list, list.currentIndex());
}

}  // namespace tarnwick
