#include "desk/recovery/left_graphs.h"

#include <QFile>
#include <algorithm>
#include <string>
#include <system_error>

#include "base/error.h"
#include "desk/widgets/text.h"

namespace tarnwick {
namespace {

std::optional<std::filesystem::file_time_type> FiledLater(const LeftGraph& left) {
  if (left.note.graph_file.empty()) return {};
  std::error_code not_there;
  const auto filed = std::filesystem::last_write_time(left.note.graph_file, not_there);
  return !not_there && filed > left.changed ? std::optional(filed) : std::nullopt;
}

QByteArray BytesOf(const std::filesystem::path& path) {
  QFile file(PathText(path));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool HoldsTheSame(const LeftGraph& left) {
  const QByteArray copy = BytesOf(left.copy);
  return !copy.isEmpty() && copy == BytesOf(left.note.graph_file);
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
  std::erase_if(found, [](LeftGraph& left) {
    left.filed_later = FiledLater(left);
    const bool saved = left.filed_later && HoldsTheSame(left);
    if (saved) RemoveLeft(left);
    return saved;
  });
  std::ranges::sort(found, {}, &LeftGraph::changed);
  return found;
}

std::filesystem::path SetAside(const LeftGraph& left, const std::filesystem::path& folder) {
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  KeepForUser(folder);
  const std::string name = left.note.graph_file.stem().string();
  std::filesystem::path kept;
  for (int number = 1; kept.empty() || std::filesystem::exists(kept, error); ++number)
    kept = folder / (name + " (" + std::to_string(number) + ").tgr");
  std::filesystem::rename(left.copy, kept, error);
  if (error) throw FileError("Cannot keep a copy", kept.string(), error.message());
  RemoveLeft(left);
  return kept;
}

void RemoveLeft(const LeftGraph& left) {
  std::error_code not_there;
  std::filesystem::remove(left.copy, not_there);
  std::filesystem::remove(NoteIn(left.folder->Path(), left.number), not_there);
}

}  // namespace tarnwick
