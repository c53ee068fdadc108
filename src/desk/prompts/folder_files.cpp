#include "desk/prompts/folder_files.h"

#include <QDir>
#include <algorithm>
#include <system_error>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

/// As QDir reads them; "*.*" also means names without a point.
QStringList Masks(std::string_view mask) {
  QStringList masks;
  for (const QString& one : ToQt(mask).split(';', Qt::SkipEmptyParts)) {
    const QString trimmed = one.trimmed();
    masks.append(trimmed == "*.*" ? QStringLiteral("*") : trimmed);
  }
  return masks;
}

bool IsLeftOut(const QString& name) {
  return name.startsWith('.') || name.endsWith(".tmp", Qt::CaseInsensitive);
}

}  // namespace

std::vector<std::filesystem::path> FilesOfFolder(const std::filesystem::path& folder,
                                                 std::string_view mask) {
  const QStringList masks = Masks(mask);
  std::vector<std::filesystem::path> files;
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    std::error_code unseen;  // what cannot be looked at is left out
    const QString name = PathText(entry->path().filename());
    if (IsLeftOut(name) || !QDir::match(masks, name)) continue;
    if (entry->is_regular_file(unseen)) files.push_back(entry->path());
  }
  std::ranges::sort(files);
  return files;
}

}  // namespace tarnwick
