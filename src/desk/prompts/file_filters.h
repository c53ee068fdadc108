// The kinds of file as a Qt file dialog lists them. Knows texts and patterns, no kind.
#pragma once

#include <QStringList>
#include <vector>

#include "graph/files/file_kinds.h"

namespace tarnwick {

/// The entry's text, and behind it in parentheses, which dialogs hide, its patterns in both cases.
QString FilterText(const FileFilter& filter);
QStringList FilterTexts(const std::vector<FileFilter>& filters);

}  // namespace tarnwick
