// The panel that shows an editor of a library: hands it what happens, and tells what goes wrong in it. Keeps the library while
// the editor lives.
#pragma once

#include <memory>

#include "desk/editors/editor_library.h"
#include "desk/panels/panel.h"

namespace tarnwick {

class EditorPanel final : public Panel {
  Q_OBJECT

 public:
  /// Empty without a library.
  EditorPanel(std::shared_ptr<const EditorLibrary> library, const PanelParts& parts);
  ~EditorPanel() override;

  void Follow(Document* document, PanelChange change) override;
  /// Keeps Esc from the window, which closes the graph by it.
  bool event(QEvent* event) override;

 private:
  EditorTrouble Trouble();

  std::shared_ptr<const EditorLibrary> library_;
  PanelParts parts_;
  QWidget* editor_ = nullptr;
};

}  // namespace tarnwick
