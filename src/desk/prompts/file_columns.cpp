#include "desk/prompts/file_columns.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QTreeView>

namespace tarnwick {
namespace {

constexpr QSize kRoom(760, 480);

}  // namespace

void ShowWholeColumns(QFileDialog& dialog) {
  auto* const files = dialog.findChild<QTreeView*>("treeView");
  if (files == nullptr) return;
  files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  dialog.resize(kRoom);
}

}  // namespace tarnwick
