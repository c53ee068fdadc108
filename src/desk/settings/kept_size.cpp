#include "desk/settings/kept_size.h"

#include <QScreen>
#include <QWidget>

namespace tarnwick {

void RestoreSize(QWidget& window, const Settings& settings, const Setting<QSize>& size) {
  const QSize stored = settings.Read(size);
  const QSize wanted = stored.isValid() ? stored : window.size();
  window.resize(wanted.boundedTo(window.screen()->availableSize()));
}

void StoreSize(const QWidget& window, Settings& settings, const Setting<QSize>& size) {
  settings.Write(size, window.size());
}

}  // namespace tarnwick
