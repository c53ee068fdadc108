#include "desk/prompts/file_filters.h"

#include "desk/widgets/text.h"

namespace tarnwick {

QString FilterText(const FileFilter& filter) {
  QStringList lower;
  QStringList upper;
  for (const FileKind* kind : filter.kinds) {
    const QString pattern = '*' + ToQt(kind->ending);
    lower.append(pattern);
    if (!kind->ending.empty()) upper.append(pattern.toUpper());
  }
  return ToQt(filter.text) + " (" + (lower + upper).join(' ') + ')';
}

QStringList FilterTexts(const std::vector<FileFilter>& filters) {
  QStringList texts;
  for (const FileFilter& filter : filters) texts.append(FilterText(filter));
  return texts;
}

}  // namespace tarnwick
