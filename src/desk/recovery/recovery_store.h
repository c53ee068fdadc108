// The copies that one running program keeps of its changed graphs, in a folder of its own that nobody but the user can look
// into. Knows states and files; no document and no thread.
#pragma once

#include <QLockFile>
#include <chrono>
#include <filesystem>
#include <memory>

#include "desk/recovery/graph_note.h"
#include "graph/graph_state.h"

namespace tarnwick {

struct LeftGraph;

/// A graph at a moment.
struct GraphCopy {
  GraphNote note;
  GraphState state;
  std::filesystem::file_time_type taken;  ///< when it was so
};

class RecoveryStore {
 public:
  /// Copies go into a folder within `root`, made and locked before the first one.
  explicit RecoveryStore(std::filesystem::path root) : root_(std::move(root)) {}
  /// Copies that are still there are left for the next start.
  ~RecoveryStore();
  RecoveryStore(const RecoveryStore&) = delete;
  RecoveryStore& operator=(const RecoveryStore&) = delete;

  /// Replaces the copy `number`, whole or not at all. Throws FileError, or Error of the graph; the old copy then stays.
  void Write(int number, const GraphCopy& copy);
  /// Makes what another program left the copy `number` of this one; at no moment there is none. Throws FileError.
  void TakeOver(int number, const LeftGraph& left);
  /// Nothing happens where there is no such copy.
  void Remove(int number);

 private:
  void MakeFolder();

  std::filesystem::path root_;
  std::filesystem::path folder_;  // empty: not made yet
  std::unique_ptr<QLockFile> lock_;
};

}  // namespace tarnwick
