#include "app/window/recent_files.h"

#include <QSettings>
#include <algorithm>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

QString Key(int number) {
  return QStringLiteral("Tarnwick/File%1").arg(number);
}

}  // namespace

RecentFiles::RecentFiles(QSettings& settings) : settings_(settings) {
  auto next = entries_.begin();
  for (int number = 1; number <= kCount; ++number) {
    const QString file = settings_.value(Key(number)).toString();
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
  for (int number = 1; number <= kCount; ++number) {
    settings_.setValue(Key(number), entries_[static_cast<std::size_t>(number - 1)]);
  }
}

}  // namespace tarnwick
