// The DataSets or marks that a page is about: several may be chosen, and dragged into another order where they have one. Knows
// names and colours.
#pragma once

#include <QWidget>
#include <cstdint>
#include <string>
#include <vector>

#include "base/color.h"

class QListWidget;
class QToolButton;

namespace tarnwick {

struct ListedItem {
  std::int32_t id = 0;
  std::string name;
  Color color;
  bool operator==(const ListedItem&) const = default;
};

class ItemList final : public QWidget {
  Q_OBJECT

 public:
  enum class Order { Fixed, ByDragging };

  ItemList(const QString& name, Order order, QWidget* parent);
  /// Those chosen before stay chosen as far as they are still there.
  void ShowItems(const std::vector<ListedItem>& items);
  void Choose(const std::vector<std::int32_t>& ids);
  /// In the order of the list.
  std::vector<std::int32_t> Chosen() const;

 signals:
  void chosenChanged();
  /// The user wants this order.
  void reordered(const std::vector<std::int32_t>& ids);

 private:
  void MoveChosen(int way);
  void TellOrder();

  std::vector<ListedItem> items_;
  QListWidget* list_;
  QToolButton* up_ = nullptr;
  QToolButton* down_ = nullptr;
  bool order_told_ = true;
};

}  // namespace tarnwick
