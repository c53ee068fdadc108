// The files of a recovery folder: N.tgr, a copy of a changed graph, beside N.note, which tells whose it is, and the lock of
// the program that writes them. Knows names and bytes; no document.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace tarnwick {

/// What of a document stands in no graph file.
struct GraphNote {
  std::string name;                       ///< of its window, "Graph_1"
  std::filesystem::path graph_file = {};  ///< that it is saved to; empty: none yet
  std::filesystem::path data_file = {};   ///< that its points were read from; empty: none
  bool operator==(const GraphNote&) const = default;
};

std::filesystem::path CopyIn(const std::filesystem::path& folder, int number);
std::filesystem::path NoteIn(const std::filesystem::path& folder, int number);
std::filesystem::path LockIn(const std::filesystem::path& folder);
/// The number of a copy by its name; nothing for any other file.
std::optional<int> NumberOfCopy(const std::filesystem::path& file);

/// Throws FileError; the old note then stays.
void WriteNote(const std::filesystem::path& file, const GraphNote& note);
/// Nothing where there is no whole note.
std::optional<GraphNote> ReadNote(const std::filesystem::path& file);

/// Nobody but the user may read or change what is there. Where the file system knows no users, nothing happens.
void KeepForUser(const std::filesystem::path& file_or_folder);

}  // namespace tarnwick
