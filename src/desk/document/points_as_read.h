// The points of DataSets as they were read last, so that what was edited since can be told and put back. Knows states; reads
// nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "desk/document/filed_points.h"
#include "graph/graph_state.h"

namespace tarnwick {

class TDataSeries;

/// What a DataSet was after its last reading. The copies share their memory with it.
struct SeriesAsRead {
  TDSInfo source;
  std::string name;
  PointChain points;
  PointErrors errors;
  std::int32_t last_id = 0;
  LoadReport report = {};
};

class PointsAsRead {
 public:
  /// `read`, or points that share with them, are in `state`, inserted graphs included.
  void Add(const std::vector<PointsOfFile>& read, const GraphState& state);
  /// The DataSet has more of its source by itself: its points count as read.
  void Came(const TDataSeries& series);
  /// True when the points are those that were read.
  bool Holds(const TDataSeries& series) const;
  /// Null when the points of the DataSet were never read. DataSets of one source that are read alike were the same, and a
  /// DataSet cut off its source was that of the source; one without a source goes by its name.
  const SeriesAsRead* Of(const TDataSeries& series) const;

 private:
  std::vector<SeriesAsRead> known_;
};

}  // namespace tarnwick
