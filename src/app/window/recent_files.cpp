#include "app/window/recent_files.h"

#include <algorithm>
#include <vector>

#include "desk/settings/settings.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

constexpr const char* kSection = "Tarnwick";
using RecentFile = Setting<QString>;
const std::array<RecentFile, RecentFiles::kCount> kFiles = {
    RecentFile{.section = kSection, .key = "File1", .label = "Recent file 1"},
    RecentFile{.section = kSection, .key = "File2", .label = "Recent file 2"},
    RecentFile{.section = kSection, .key = "File3", .label = "Recent file 3"},
    RecentFile{.section = kSection, .key = "File4", .label = "Recent file 4"},
    RecentFile{.section = kSection, .key = "File5", .label = "Recent file 5"},
    RecentFile{.section = kSection, .key = "File6", .label = "Recent file 6"},
    RecentFile{.section = kSection, .key = "File7", .label = "Recent file 7"},
    RecentFile{.section = kSection, .key = "File8", .label = "Recent file 8"},
    RecentFile{.section = kSection, .key = "File9", .label = "Recent file 9"},
};

}  // namespace

std::span<const SettingRow> RecentSettings() {
  static const std::vector<SettingRow> kRows = [] {
    std::vector<SettingRow> rows;
    rows.reserve(kFiles.size());
    for (const RecentFile& file : kFiles) rows.emplace_back(&file);
    return rows;
  }();
  return kRows;
}

RecentFiles::RecentFiles(Settings& settings) : settings_(settings) {
  auto next = entries_.begin();
  for (const RecentFile& setting : kFiles) {
    const QString file = settings_.Read(setting);
    const bool known = !file.isEmpty() && std::find(entries_.begin(), next, file) != next;
    if (!known) *next++ = file;
  }
}

void RecentFiles::Add(const std::filesystem::path& path) {
  const QString file = PathText(std::filesystem::absolute(path).lexically_normal());
  auto place = std::find(entries_.begin(), entries_.end(), file);
  if (place == entries_.end()) place = std::prev(entries_.end());
  *place = file;
  std::rotate(entries_.begin(), place, std::next(place));
  Write();
}

void RecentFiles::Write() {
  for (std::size_t i = 0; i < kFiles.size(); ++i) settings_.Write(kFiles[i], entries_[i]);
}

}  // namespace tarnwick
