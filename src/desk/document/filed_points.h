// Which points lie in which files, so that closing a document can tell what would be lost. Knows states and names of files;
// reads no file.
#pragma once

#include <filesystem>
#include <vector>

#include "data/import/load_report.h"
#include "graph/graph_state.h"

namespace tarnwick {

/// Points as a file holds them, edited or not since.
struct PointsOfFile {
  std::filesystem::path file;
  PointChain points;
  LoadReport report = {};  ///< of their reading, where they were read as data
};

/// The points of all DataSets of a graph, inserted graphs included, as those of `file`.
std::vector<PointsOfFile> PointsOfGraph(const GraphState& state, const std::filesystem::path& file);

class FiledPoints {
 public:
  /// What was read from files. Of what is known already, only points that `state` still holds stay known.
  void Add(std::vector<PointsOfFile> read, const GraphState& state);
  /// `file` was written: it holds `kept` and nothing that it held before.
  void Rewritten(const std::filesystem::path& file, std::vector<PointsOfFile> kept);
  /// True when all points of the graph, inserted graphs included, lie in files that are still there, unedited.
  bool HoldAll(const GraphState& state) const;
  /// True for points of one DataSet that lie in a file likewise, and where there are none.
  bool Hold(const PointChain& points) const;

 private:
  std::vector<PointsOfFile> known_;
};

}  // namespace tarnwick
