// F1 where no shortcut of the main window reaches: in dialogs and in open menus.
#pragma once

#include <QObject>
#include <functional>

#include "desk/commands/command.h"

class QWidget;

namespace tarnwick {

class HelpKeys final : public QObject {
  Q_OBJECT

 public:
  /// Watches the whole program as long as `window`, its main window, lives.
  HelpKeys(QWidget& window, std::function<CommandContext()> context);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<CommandContext()> context_;
};

}  // namespace tarnwick
