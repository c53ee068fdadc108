// Windows that come back in the size they had. Knows settings and widgets.
#pragma once

#include "desk/settings/settings.h"

class QWidget;

namespace tarnwick {

/// Gives a window the size that is stored, as far as the screen goes; its own where none is.
void RestoreSize(QWidget& window, const Settings& settings, const Setting<QSize>& size);
void StoreSize(const QWidget& window, Settings& settings, const Setting<QSize>& size);

}  // namespace tarnwick
