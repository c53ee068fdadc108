// The files of a drag from a file manager.
#pragma once

#include <filesystem>
#include <vector>

class QMimeData;

namespace tarnwick {

/// Paths of the local files that are dragged, in their order; empty when the drag holds none.
std::vector<std::filesystem::path> DroppedFiles(const QMimeData& data);

}  // namespace tarnwick
