#include "app/window/graph_popup.h"

#include <QAction>
#include <QMenu>

#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/widgets/numbered_caption.h"
#include "desk/widgets/text.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

QAction* AddItem(QMenu& menu, std::size_t number, const std::string& text, bool checked) {
  QAction* item =
      menu.addAction(NumberedCaption(number, ToQt(text).simplified(), menu.fontMetrics()));
  item->setCheckable(true);
  item->setChecked(checked);
  return item;
}

void AddDataSets(QMenu& menu, Document& document) {
  const TxyGraph& graph = document.Graph();
  for (std::size_t i = 0; i < graph.SeriesCount(); ++i) {
    const auto index = static_cast<std::int32_t>(i);
    QAction* item =
        AddItem(menu, i + 1, graph.Series(i).SeriesName(), index == graph.CurrentSeriesIndex());
    QObject::connect(item, &QAction::triggered, &document,
                     [&document, index] { document.Graph().SetCurrentSeriesIndex(index); });
  }
  menu.addSeparator();
}

void AddMarks(QMenu& menu, Document& document) {
  const MarkList& marks = document.Graph().Marks();
  if (!marks.All().empty()) menu.addSection(QObject::tr("Marks"));
  for (const Mark& mark : marks.All()) {
    QAction* item = AddItem(menu, static_cast<std::size_t>(mark.id), mark.caption,
                            mark.id == marks.CurrentId());
    QObject::connect(item, &QAction::triggered, &document,
                     [&document, id = mark.id] { SetCurrentMark(document.Graph(), id); });
  }
  menu.addSeparator();
}

void AddInsertedGraphs(QMenu& menu, Document& document) {
  const auto& children = document.WholeGraph().Children();
  if (!children.empty()) menu.addSection(QObject::tr("Inserted Graphs"));
  for (std::size_t i = 0; i < children.size(); ++i) {
    QAction* item = AddItem(menu, i + 1, children[i]->GetAppearance().title_of_graph,
                            document.SelectedChild() == i);
    QObject::connect(item, &QAction::triggered, &document,
                     [&document, i] { document.SelectChild(i); });
  }
  menu.addSeparator();
}

}  // namespace

void FillGraphPopup(QMenu& menu, Document& document, const CommandActions& actions) {
  AddDataSets(menu, document);
  AddMarks(menu, document);
  AddInsertedGraphs(menu, document);
  actions.AddPopupCommands(menu);
}

}  // namespace tarnwick
