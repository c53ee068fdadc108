#include "editors/graph/page_tree.h"

#include <QSignalBlocker>

#include "desk/widgets/text.h"
#include "editors/graph/pages.h"

namespace tarnwick {
namespace {

constexpr int kMargin = 28;  // pixels beside the longest caption

std::size_t PageOfItem(const QTreeWidgetItem& item) {
  return static_cast<std::size_t>(item.data(0, Qt::UserRole).toInt());
}

}  // namespace

PageTree::PageTree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName("Pages");
  setAccessibleName(tr("Pages"));
  setHeaderHidden(true);
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setIndentation(indentation() * 3 / 4);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QTreeWidgetItem* above = nullptr;
  for (const Page& page : Pages()) {
    const QStringList caption(ToQt(page.caption));
    auto* item =
        page.below ? new QTreeWidgetItem(above, caption) : new QTreeWidgetItem(this, caption);
    item->setData(0, Qt::UserRole, static_cast<int>(&page - Pages().data()));
    if (!page.below) above = item;
  }
  expandAll();
  resizeColumnToContents(0);
  setFixedWidth(columnWidth(0) + kMargin);
  connect(this, &QTreeWidget::currentItemChanged, this, [this](const QTreeWidgetItem* item) {
    if (item) emit chosen(PageOfItem(*item));
  });
}

void PageTree::Choose(std::size_t page) {
  const QSignalBlocker blocker(this);
  for (QTreeWidgetItemIterator item(this); *item; ++item) {
    if (PageOfItem(**item) == page) setCurrentItem(*item);
  }
}

}  // namespace tarnwick
