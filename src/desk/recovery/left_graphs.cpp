#include "desk/recovery/left_graphs.h"

#include <algorithm>
#include <system_error>

#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

bool SavedLater(const LeftGraph& left) {
  if (left.note.graph_file.empty()) return false;
  std::error_code not_there;
  const auto saved = std::filesystem::last_write_time(left.note.graph_file, not_there);
  return !not_there && saved > left.changed;
}

/// Nothing for what is no copy, or an empty one.
std::optional<LeftGraph> LeftIn(const std::filesystem::directory_entry& entry,
                                const std::shared_ptr<const LeftFolder>& folder) {
  const std::optional<int> number = NumberOfCopy(entry.path());
  std::error_code error;
  if (!number || !entry.is_regular_file(error) || entry.file_size(error) == 0 || error) return {};
  const auto changed = entry.last_write_time(error);
  if (error) return {};
  // A copy is worth having without its note.
  const GraphNote unknown{"Graph_" + std::to_string(*number)};
  return LeftGraph{ReadNote(NoteIn(folder->Path(), *number)).value_or(unknown), *number,
                   entry.path(), changed, folder};
}

template <class Take>
void ForEachIn(const std::filesystem::path& folder, Take&& take) {
  std::error_code error;
  for (auto entry = std::filesystem::directory_iterator(folder, error);
       !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
    take(*entry);
  }
}

}  // namespace

std::shared_ptr<const LeftFolder> LeftFolder::Hold(const std::filesystem::path& folder) {
  auto lock = std::make_unique<QLockFile>(PathText(LockIn(folder)));
  lock->setStaleLockTime(0);  // held as long as its process lives
  if (!lock->tryLock(0)) return nullptr;
  return std::shared_ptr<const LeftFolder>(new LeftFolder(folder, std::move(lock)));
}

LeftFolder::~LeftFolder() {
  lock_.reset();
  std::error_code not_empty;
  std::filesystem::remove(folder_, not_empty);
}

std::vector<LeftGraph> FindLeftGraphs(const std::filesystem::path& root) {
  std::vector<LeftGraph> found;
  ForEachIn(root, [&](const std::filesystem::directory_entry& folder) {
    std::error_code error;
    if (folder.is_symlink(error) || !folder.is_directory(error)) return;
    const auto held = LeftFolder::Hold(folder.path());
    if (!held) return;
    ForEachIn(folder.path(), [&](const std::filesystem::directory_entry& entry) {
      if (auto left = LeftIn(entry, held)) found.push_back(*std::move(left));
    });
  });
  std::erase_if(found, [](const LeftGraph& left) {
    const bool saved = SavedLater(left);
    if (saved) RemoveLeft(left);
    return saved;
  });
  std::ranges::sort(found, {}, &LeftGraph::changed);
  return found;
}

void RemoveLeft(const LeftGraph& left) {
  std::error_code not_there;
  std::filesystem::remove(left.copy, not_there);
  std::filesystem::remove(NoteIn(left.folder->Path(), left.number), not_there);
}

}  // namespace tarnwick
