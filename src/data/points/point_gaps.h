// Where the pieces of a measurement begin, as ids: the points that follow one another in the order of their ids belong together
// up to where a piece begins. Knows ids only; which lines are drawn between points is the graph's business.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace tarnwick {

/// A plain value; copies share. Deleting, moving and shifting points leave it right, for it names no point: a piece begins
/// between two ids. Points with ids above Last() were added afterwards and belong to every piece.
class PointGaps {
 public:
  PointGaps() = default;
  /// `begins`: strictly ascending, each the lowest id that a piece can have; above all ids before it.
  PointGaps(std::vector<std::int32_t> begins, std::int32_t last);

  bool Empty() const { return begins_ == nullptr; }
  std::span<const std::int32_t> Begins() const;
  std::int32_t Last() const { return last_; }
  /// Whether the points with these two ids belong to different pieces.
  bool Between(std::int32_t one, std::int32_t other) const;
  bool operator==(const PointGaps& other) const;

 private:
  std::shared_ptr<const std::vector<std::int32_t>> begins_;  // null: none
  std::int32_t last_ = 0;
};

}  // namespace tarnwick
