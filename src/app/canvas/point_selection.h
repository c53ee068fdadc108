// The point of the current DataSet that was picked, and walking from it to others. Knows the document's graph worked on, no
// widget and no keys.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "graph/picking.h"

namespace tarnwick {

class Document;

enum class PointWalk { Left, Right, PageLeft, PageRight, First, Last };

class PointSelection {
 public:
  /// The document outlives the selection.
  explicit PointSelection(const Document& document) : document_(document) {}

  const std::optional<PickedPoint>& Point() const { return point_; }
  /// Takes the point of the current DataSet with that number, as it stands there.
  void Take(const std::optional<PickedPoint>& point);
  /// Goes on from the picked point, from where it was when it is gone, or from the edge of what the X axis shows when none
  /// was picked; stops at the ends.
  /// False when the current DataSet has no points.
  bool Walk(PointWalk walk);
  /// Looks the point up again after the graph changed: its values may be others, and without it nothing is picked.
  void Refresh();

 private:
  std::optional<std::size_t> IndexOfPoint() const;
  bool IsSameSeries() const;
  std::size_t FirstIndex(PointWalk walk) const;

  const Document& document_;
  std::optional<PickedPoint> point_;
  std::optional<std::size_t> child_;  // the graph and DataSet it was picked in
  std::int32_t series_ = -1;
  std::size_t index_ = 0;  // where it stood when last looked up
  bool gone_ = false;      // it was deleted
};

}  // namespace tarnwick
