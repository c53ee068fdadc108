// Offers the other DataSets of a graph to be given the look of one of them. Knows names; what a look is, is the editor's.
#pragma once

#include <QToolButton>
#include <cstdint>
#include <functional>
#include <vector>

#include "editors/graph/item_list.h"

class QMenu;

namespace tarnwick {

class CopyLookButton final : public QToolButton {
  Q_OBJECT

 public:
  /// `others` answers who is offered when the menu is opened.
  CopyLookButton(std::function<std::vector<ListedItem>()> others, QWidget* parent);

 signals:
  void wanted(const std::vector<std::int32_t>& to);

 private:
  void Fill(QMenu& menu);

  std::function<std::vector<ListedItem>()> others_;
};

}  // namespace tarnwick
