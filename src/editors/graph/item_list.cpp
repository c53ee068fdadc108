#include "editors/graph/item_list.h"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPainter>
#include <QPixmap>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "desk/widgets/names_apart.h"
#include "desk/widgets/text.h"
#include "graph/paint/plot_pen.h"

namespace tarnwick {
namespace {

constexpr int kSwatch = 12;
constexpr int kFewestLines = 3;
constexpr int kMostLines = 7;

QIcon Swatch(Color color, const QWidget& on) {
  const double ratio = on.devicePixelRatioF();
  QPixmap picture(QSize(kSwatch, kSwatch) * ratio);
  picture.setDevicePixelRatio(ratio);
  picture.fill(QtColor(color));
  return picture;
}

std::int32_t IdOf(const QListWidgetItem& item) {
  return item.data(Qt::UserRole).toInt();
}

}  // namespace

ItemList::ItemList(const QString& name, Order order, QWidget* parent)
    : QWidget(parent), list_(new QListWidget(this)) {
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  line->addWidget(list_);
  list_->setObjectName("Items");
  list_->setAccessibleName(name);
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setIconSize({kSwatch, kSwatch});
  TellApart(*list_);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(list_, &QListWidget::itemSelectionChanged, this, &ItemList::chosenChanged);
  if (order == Order::Fixed) return;
  list_->setDragDropMode(QAbstractItemView::InternalMove);
  list_->setToolTip(
      tr("Drawn from top to bottom, the last on top. Drag to change the order; "
         "Ctrl and Shift choose several."));
  // A drag of several tells of each; the order is taken once, when it is settled.
  connect(list_->model(), &QAbstractItemModel::rowsMoved, this, [this] {
    if (!std::exchange(order_told_, false)) return;
    QMetaObject::invokeMethod(this, &ItemList::TellOrder, Qt::QueuedConnection);
  });
  auto* buttons = new QVBoxLayout;
  const auto add = [&](const char* object, Qt::ArrowType arrow, const QString& tip, int way) {
    auto* button = new QToolButton(this);
    button->setObjectName(object);
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    connect(button, &QToolButton::clicked, this, [this, way] { MoveChosen(way); });
    buttons->addWidget(button);
    return button;
  };
  up_ = add("Up", Qt::UpArrow, tr("Draw earlier"), -1);
  down_ = add("Down", Qt::DownArrow, tr("Draw later"), 1);
  buttons->addStretch();
  line->addLayout(buttons);
}

void ItemList::ShowItems(const std::vector<ListedItem>& items) {
  if (items == items_) return;
  const QSignalBlocker blocker(list_);
  const std::vector<std::int32_t> chosen = Chosen();
  items_ = items;
  list_->clear();
  for (const ListedItem& item : items) {
    auto* line = new QListWidgetItem(Swatch(item.color, *this), ToQt(item.name), list_);
    line->setData(Qt::UserRole, item.id);
    line->setToolTip(ToQt(item.name));
    line->setFlags(line->flags() & ~Qt::ItemIsDropEnabled);
  }
  const int lines = std::clamp(static_cast<int>(items.size()), kFewestLines, kMostLines);
  const int height = std::max(list_->sizeHintForRow(0), list_->fontMetrics().height() + 4);
  list_->setFixedHeight(lines * height + 2 * list_->frameWidth() + 2);
  Choose(chosen);
}

void ItemList::Choose(const std::vector<std::int32_t>& ids) {
  const QSignalBlocker blocker(list_);
  list_->clearSelection();
  for (int i = 0; i < list_->count(); ++i) {
    QListWidgetItem& item = *list_->item(i);
    if (std::ranges::find(ids, IdOf(item)) == ids.end()) continue;
    if (list_->selectedItems().isEmpty()) {
      list_->setCurrentItem(&item, QItemSelectionModel::NoUpdate);
      list_->scrollToItem(&item);
    }
    item.setSelected(true);
  }
}

std::vector<std::int32_t> ItemList::Chosen() const {
  std::vector<std::int32_t> ids;
  for (int i = 0; i < list_->count(); ++i) {
    if (list_->item(i)->isSelected()) ids.push_back(IdOf(*list_->item(i)));
  }
  return ids;
}

void ItemList::MoveChosen(int way) {
  std::vector<std::int32_t> ids;
  ids.reserve(items_.size());
  for (const ListedItem& item : items_) ids.push_back(item.id);
  std::vector<std::int32_t> chosen = Chosen();
  if (way > 0) std::ranges::reverse(chosen);
  const auto last = static_cast<std::ptrdiff_t>(ids.size()) - 1;
  for (const std::int32_t id : chosen) {
    const std::ptrdiff_t place = std::ranges::find(ids, id) - ids.begin();
    if (place + way < 0 || place + way > last) return;
    std::swap(ids[static_cast<std::size_t>(place)], ids[static_cast<std::size_t>(place + way)]);
  }
  if (!chosen.empty()) emit reordered(ids);
}

void ItemList::TellOrder() {
  order_told_ = true;
  std::vector<std::int32_t> ids;
  ids.reserve(static_cast<std::size_t>(list_->count()));
  for (int i = 0; i < list_->count(); ++i) ids.push_back(IdOf(*list_->item(i)));
  items_.clear();  // what is shown is the user's order now, not the graph's
  emit reordered(ids);
}

}  // namespace tarnwick
