// The list of pages, by the pages' own table. Knows captions; what a page holds is the editor's.
#pragma once

#include <QTreeWidget>
#include <cstddef>

namespace tarnwick {

class PageTree final : public QTreeWidget {
  Q_OBJECT

 public:
  explicit PageTree(QWidget* parent);

  /// Emits nothing.
  void Choose(std::size_t page);

 signals:
  void chosen(std::size_t page);
};

}  // namespace tarnwick
