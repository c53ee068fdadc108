#include "app/window/graph_popup.h"

#include <QMenu>

#include "app/data/data_set_list.h"
#include "desk/commands/command_actions.h"
#include "desk/document/document.h"
#include "desk/widgets/numbered_caption.h"
#include "desk/widgets/text.h"
#include "graph/edit/mark_edit.h"

namespace tarnwick {
namespace {

QString Caption(std::size_t number, const std::string& text, const QFontMetrics& metrics) {
  return NumberedCaption(number, ToQt(text).simplified(), metrics);
}

std::vector<MenuItem> MarkItems(const Document& document, const QFontMetrics& metrics) {
  std::vector<MenuItem> items;
  const MarkList& marks = document.Graph().Marks();
  for (const Mark& mark : marks.All()) {
    items.push_back({.caption = Caption(static_cast<std::size_t>(mark.id), mark.caption, metrics),
                     .hint = {},
                     .checked = mark.id == marks.CurrentId(),
                     .run = [id = mark.id](CommandContext& c) {
                       if (c.document) SetCurrentMark(c.document->Graph(), id);
                     }});
  }
  return items;
}

std::vector<MenuItem> InsertedGraphItems(const Document& document, const QFontMetrics& metrics) {
  std::vector<MenuItem> items;
  const auto& children = document.WholeGraph().Children();
  for (std::size_t i = 0; i < children.size(); ++i) {
    items.push_back(
        {.caption = Caption(i + 1, children[i]->GetAppearance().title_of_graph, metrics),
         .hint = {},
         .checked = document.SelectedChild() == i,
         .run = [i](CommandContext& c) {
           if (c.document) c.document->SelectChild(i);
         }});
  }
  return items;
}

}  // namespace

void FillGraphPopup(QMenu& menu, const CommandContext& context, CommandActions& actions) {
  if (!context.document) return;
  const auto add = [&](const QString& section, const std::vector<MenuItem>& items) {
    if (!items.empty() && !section.isEmpty()) menu.addSection(section);
    actions.AddItems(menu, items);
    menu.addSeparator();
  };
  add({}, DataSetItems(context, menu.fontMetrics()));
  add(QObject::tr("Marks"), MarkItems(*context.document, menu.fontMetrics()));
  add(QObject::tr("Inserted Graphs"), InsertedGraphItems(*context.document, menu.fontMetrics()));
  actions.AddPopupCommands(menu);
}

}  // namespace tarnwick
