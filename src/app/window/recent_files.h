// The list of files opened last, kept between runs. Knows the settings store, no menu.
#pragma once

#include <QString>
#include <array>
#include <filesystem>
#include <span>

#include "desk/settings/setting.h"

namespace tarnwick {

class Settings;

/// Those that the list is kept in.
std::span<const SettingRow> RecentSettings();

class RecentFiles {
 public:
  static constexpr int kCount = 9;

  /// Reads "File1" to "File9" of `settings`, which outlives the list; a name given twice counts once.
  explicit RecentFiles(Settings& settings);
  /// Exactly kCount entries, most recent first; unused ones are empty.
  const std::array<QString, kCount>& Entries() const { return entries_; }
  /// Puts a file at the top, from its place in the list or in place of the last entry, and keeps the list.
  void Add(const std::filesystem::path& path);
  void Write();

 private:
  Settings& settings_;
  std::array<QString, kCount> entries_;
};

}  // namespace tarnwick
