#include "desk/settings/settings.h"

namespace tarnwick {

std::optional<bool> Settings::BooleanOf(const QVariant& stored) {
  const QString text = stored.toString().trimmed().toLower();
  if (text == "1" || text == "true") return true;
  if (text == "0" || text == "false") return false;
  return std::nullopt;
}

QString Settings::Trouble() const {
  if (store_->isWritable()) return {};
  return QObject::tr("Settings and recent files are not kept: %1 cannot be written")
      .arg(store_->fileName());
}

}  // namespace tarnwick
