#include "help/help_browser.h"

#include <QHelpEngineCore>

namespace tarnwick {

HelpBrowser::HelpBrowser(QHelpEngineCore& engine, QWidget* parent)
    : QTextBrowser(parent), engine_(engine) {
  setObjectName("HelpPage");
  setAccessibleName(tr("Page of help"));
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
  // Pages name each other by paths beside their own.
  const QUrl url = name.isRelative() ? source().resolved(name) : name;
  if (url.scheme() == QLatin1String("qthelp")) return engine_.fileData(url);
  return QTextBrowser::loadResource(type, name);
}

}  // namespace tarnwick
