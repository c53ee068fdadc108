#include "desk/document/dropped_files.h"

#include <QMimeData>
#include <QUrl>

#include "desk/widgets/text.h"

namespace tarnwick {

std::vector<std::filesystem::path> DroppedFiles(const QMimeData& data) {
  std::vector<std::filesystem::path> files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files.push_back(ToPath(url.toLocalFile()));
  }
  return files;
}

}  // namespace tarnwick
