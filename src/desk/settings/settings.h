// The user's settings, kept between runs. Knows the store; which settings there are stands with whoever uses them.
#pragma once

#include <QSettings>
#include <memory>
#include <optional>
#include <type_traits>

#include "desk/settings/setting.h"

namespace tarnwick {

class Settings {
 public:
  explicit Settings(std::unique_ptr<QSettings> store) : store_(std::move(store)) {}

  /// What is stored; the fallback where nothing is, or nothing that is a value of its type.
  template <class T>
  T Read(const Setting<T>& setting) const {
    QVariant value = store_->value(PathOf(setting.section, setting.key));
    if constexpr (std::is_same_v<T, bool>) return BooleanOf(value).value_or(setting.fallback);
    return value.convert(QMetaType::fromType<T>()) ? value.value<T>() : setting.fallback;
  }
  template <class T>
  void Write(const Setting<T>& setting, const T& value) {
    store_->setValue(PathOf(setting.section, setting.key), QVariant::fromValue(value));
  }
  /// Why nothing written is kept; empty when it is.
  QString Trouble() const;

 private:
  /// 0, 1, true and false are booleans, other texts and numbers none.
  static std::optional<bool> BooleanOf(const QVariant& stored);
  /// "Paper/Width"
  static QString PathOf(const char* section, const char* key) {
    return QLatin1String(section) + QLatin1Char('/') + QLatin1String(key);
  }

  std::unique_ptr<QSettings> store_;
};

}  // namespace tarnwick
