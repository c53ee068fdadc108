// The copies of changed graphs that programs left when they were ended. Knows folders and locks; opens no graph.
#pragma once

#include <QLockFile>
#include <filesystem>
#include <memory>
#include <optional>
#include <vector>

#include "desk/recovery/graph_note.h"

namespace tarnwick {

/// A folder that a program left, held so that no other start offers its graphs meanwhile. Goes with its last copy.
class LeftFolder {
 public:
  /// Null when its program still runs, or another holds it.
  static std::shared_ptr<const LeftFolder> Hold(const std::filesystem::path& folder);
  ~LeftFolder();
  LeftFolder(const LeftFolder&) = delete;
  LeftFolder& operator=(const LeftFolder&) = delete;

  const std::filesystem::path& Path() const { return folder_; }

 private:
  LeftFolder(std::filesystem::path folder, std::unique_ptr<QLockFile> lock)
      : folder_(std::move(folder)), lock_(std::move(lock)) {}

  std::filesystem::path folder_;
  std::unique_ptr<QLockFile> lock_;
};

/// A changed graph that was open when its program ended.
struct LeftGraph {
  GraphNote note;
  int number = 0;
  std::filesystem::path copy;               ///< a graph file
  std::filesystem::file_time_type changed;  ///< as it was then, or some seconds before
  std::shared_ptr<const LeftFolder> folder;
  /// When its file was written, where that was after the copy: by another program, or by its own that was ended before it
  /// took the copy away.
  std::optional<std::filesystem::file_time_type> filed_later = {};
};

/// What programs that run no more left within `root`, the longest unchanged first. A copy whose file was written later and holds
/// the same is none of them, and goes. Files and folders of others are passed over.
std::vector<LeftGraph> FindLeftGraphs(const std::filesystem::path& root);

/// The copy is not offered again but lies in `folder`, where nothing takes its place; answers its new name. Throws FileError;
/// it then stays where it is.
std::filesystem::path SetAside(const LeftGraph& left, const std::filesystem::path& folder);

/// The copy is not offered again.
void RemoveLeft(const LeftGraph& left);

}  // namespace tarnwick
