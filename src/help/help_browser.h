// Shows the pages that a help engine holds.
#pragma once

#include <QTextBrowser>

class QHelpEngineCore;

namespace tarnwick {

class HelpBrowser final : public QTextBrowser {
  Q_OBJECT

 public:
  HelpBrowser(QHelpEngineCore& engine, QWidget* parent);

  QVariant loadResource(int type, const QUrl& name) override;

 private:
  QHelpEngineCore& engine_;
};

}  // namespace tarnwick
