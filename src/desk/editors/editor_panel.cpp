#include "desk/editors/editor_panel.h"

#include <QKeyEvent>
#include <QVBoxLayout>
#include <string>
#include <utility>

#include "base/error.h"
#include "desk/commands/command_actions.h"

namespace tarnwick {
namespace {

extern "C" void TellInPanel(void* actions, const char* text) {
  static_cast<CommandActions*>(actions)->RunAsCommand(
      [why = std::string(text)](CommandContext&) { throw Error(why); });
}

}  // namespace

EditorPanel::EditorPanel(std::shared_ptr<const EditorLibrary> library, const PanelParts& parts)
    : library_(std::move(library)), parts_(parts) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  if (!library_) return;
  const EditorTrouble trouble = Trouble();
  editor_ = library_->Table().edit(&parts_, &trouble);
  if (!editor_) return;
  column->addWidget(editor_);
  setFocusProxy(editor_);
}

EditorPanel::~EditorPanel() {
  // While its code is still there.
  delete editor_;
}

EditorTrouble EditorPanel::Trouble() {
  return {&parts_.actions, &TellInPanel};
}

bool EditorPanel::event(QEvent* event) {
  const bool key = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
  if (!key || static_cast<QKeyEvent*>(event)->key() != Qt::Key_Escape) return Panel::event(event);
  event->accept();
  return true;
}

void EditorPanel::Follow(Document* document, PanelChange change) {
  if (!editor_) return;
  const EditorTrouble trouble = Trouble();
  library_->Table().follow(editor_, document, &change, &trouble);
}

}  // namespace tarnwick
