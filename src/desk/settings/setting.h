// One setting as a row of data: declared once beside what it is for, read and written through Settings, listed by its
// feature. Knows no store and no widget.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>
#include <variant>

namespace tarnwick {

template <class T>
struct Setting {
  const char* section;  ///< group of the settings store
  const char* key;      ///< within the section
  T fallback{};         ///< what holds where nothing usable is stored
  const char* label;    ///< what the user calls it
};

/// Any setting, for whatever lists them.
using SettingRow = std::variant<const Setting<bool>*, const Setting<int>*, const Setting<double>*,
                                const Setting<QString>*, const Setting<QStringList>*,
                                const Setting<QSize>*, const Setting<QRect>*>;

}  // namespace tarnwick
