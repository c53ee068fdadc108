// The storage below PointChain: chunks of neighbouring points, groups of neighbouring chunks, and the root over the groups.
// Knows how points lie in memory; knows neither how a chain is searched nor when it is split.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/cow_ptr.h"

namespace tarnwick {

/// One stored point. `y` is the stored ordinate, not corrected by the base line.
struct Point {
  std::int32_t id = 0;
  double x = 0;
  double y = 0;
  double regression = 0;
};

/// Smallest and largest stored Y of a run of points, with NaN left out (`min > max` when nothing was left).
struct YExtremes {
  double min = 0;
  double max = 0;
  bool gaps = false;  ///< some Y is NaN
};

/// A run of neighbouring points as a structure of arrays.
class PointChunk : public CowCounted {
 public:
  static constexpr std::size_t kCapacity = 512;

  PointChunk() = default;
  PointChunk(const PointChunk& other);

  std::size_t Size() const { return x_.size(); }
  const std::vector<double>& X() const { return x_; }
  const std::vector<double>& Y() const { return y_; }
  /// Empty while every value is 0.
  const std::vector<double>& Regression() const { return regression_; }
  std::int32_t Id(std::size_t offset) const {
    return ids_.empty() ? first_id_ + static_cast<std::int32_t>(offset) : ids_[offset];
  }
  Point At(std::size_t offset) const;
  /// The offset of the point with that id; Size() when there is none.
  std::size_t OffsetOfId(std::int32_t id) const;
  /// Computed when first asked for; safe to ask from several threads.
  YExtremes Extremes() const;

  void Reserve(std::size_t points);
  void Append(std::int32_t id, double x, double y) {
    NoteId(id);
    x_.push_back(x);
    y_.push_back(y);
    if (!regression_.empty()) regression_.push_back(0);
    extremes_known_.store(false, std::memory_order_relaxed);
  }
  /// Points with the ids first_id, first_id + 1, …
  void AppendRun(std::int32_t first_id, const double* x, const double* y, std::size_t count);
  void Insert(std::size_t offset, const Point& point);
  void Set(std::size_t offset, double x, double y);
  void Erase(std::size_t offset);
  /// Cuts the points from `offset` on off into the returned chunk.
  std::unique_ptr<PointChunk> SplitAt(std::size_t offset);
  void Shift(double dx);
  /// The regression values for writing, all of them present.
  std::vector<double>& EditRegression();
  /// Drops the regression values when all are 0.
  void TidyRegression();
  void ClearRegression() { regression_ = {}; }

 private:
  void NoteId(std::int32_t id) {
    if (x_.empty()) {
      first_id_ = id;
    } else if (!ids_.empty()) {
      ids_.push_back(id);
    } else if (id != first_id_ + static_cast<std::int32_t>(x_.size())) {
      SpellOutIds();
      ids_.push_back(id);
    }
  }
  void SpellOutIds();

  std::vector<double> x_;
  std::vector<double> y_;
  std::vector<double> regression_;
  std::vector<std::int32_t> ids_;  // empty while the ids are first_id_, first_id_ + 1, …
  std::int32_t first_id_ = 0;
  mutable std::atomic<bool> extremes_known_{false};
  mutable std::atomic<double> y_min_{0};
  mutable std::atomic<double> y_max_{0};
  mutable std::atomic<bool> y_gaps_{false};
};

/// Neighbouring chunks with what a search needs of them side by side.
struct ChunkGroup : CowCounted {
  static constexpr std::size_t kCapacity = 128;

  std::vector<double> first_x;       ///< X of each chunk's first point
  std::vector<std::uint32_t> start;  ///< index of each chunk's first point within the group
  std::vector<CowPtr<PointChunk>> chunks;
  std::uint32_t points = 0;
};

/// All groups, with the same figures one floor up.
struct ChunkRoot : CowCounted {
  std::vector<double> first_x;
  std::vector<std::size_t> start;        ///< index of each group's first point
  std::vector<std::size_t> first_chunk;  ///< number of each group's first chunk
  std::vector<CowPtr<ChunkGroup>> groups;
};

}  // namespace tarnwick
