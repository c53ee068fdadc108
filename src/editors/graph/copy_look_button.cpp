#include "editors/graph/copy_look_button.h"

#include <QMenu>
#include <utility>

#include "desk/widgets/text.h"

namespace tarnwick {

CopyLookButton::CopyLookButton(std::function<std::vector<ListedItem>()> others, QWidget* parent)
    : QToolButton(parent), others_(std::move(others)) {
  setObjectName("CopyLook");
  setText(tr("Copy Look To") + "   ");
  setToolTip(tr("Give lines, symbols and colors of the DataSet to others"));
  setPopupMode(QToolButton::InstantPopup);
  setFocusPolicy(Qt::StrongFocus);
  auto* menu = new QMenu(this);
  setMenu(menu);
  connect(menu, &QMenu::aboutToShow, this, [this, menu] { Fill(*menu); });
}

void CopyLookButton::Fill(QMenu& menu) {
  menu.clear();
  const std::vector<ListedItem> others = others_();
  std::vector<std::int32_t> all;
  all.reserve(others.size());
  for (const ListedItem& other : others) all.push_back(other.id);
  connect(menu.addAction(tr("&All Others")), &QAction::triggered, this,
          [this, all] { emit wanted(all); });
  menu.addSeparator();
  for (const ListedItem& other : others) {
    connect(menu.addAction(ToQt(other.name).replace("&", "&&")), &QAction::triggered, this,
            [this, id = other.id] { emit wanted({id}); });
  }
}

}  // namespace tarnwick
