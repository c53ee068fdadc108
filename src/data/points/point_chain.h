// The points of one DataSet: a chunked, sorted, copy-on-write sequence. Knows order, chunks and ids; knows nothing of
// tolerance, base lines or listeners (those are the DataSet's).
//
// A copy shares everything with the original until one side is edited, and may be read in another thread meanwhile. An edit
// copies one chunk, its group's directory and the root when they are shared.
//
// Points handed to PlaceLate wait until somebody asks for more than the chain's size and end; then all are merged into the
// order at once. No answer tells the difference. Several threads may read one chain, waiting points or not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>

#include "data/points/chunk_directory.h"
#include "data/points/cow_ptr.h"
#include "data/points/late_points.h"

namespace tarnwick {

/// A run of neighbouring points, contiguous in memory. Valid until the chain it came from changes or dies.
struct ChunkView {
  std::size_t first_index = 0;         ///< 0-based position of the first point in the whole chain
  std::span<const double> x;           ///< ascending
  std::span<const double> y;           ///< same length as x
  std::span<const double> regression;  ///< same length as x, or empty when every value is 0
  const PointChunk* chunk = nullptr;   ///< where they lie

  /// Extremes of stored Y over the points begin <= i < end.
  YExtremes Extremes(std::size_t begin, std::size_t end) const {
    return chunk->Extremes(begin, end);
  }
};

class PointChain {
 public:
  using Place = ChunkPlace;

  PointChain();
  PointChain(const PointChain& other);
  PointChain(PointChain&&) noexcept = default;
  PointChain& operator=(const PointChain& other);
  PointChain& operator=(PointChain&&) noexcept = default;
  ~PointChain() = default;

  // --- reading. Every index is below Size(), every chunk number below ChunkCount().
  std::size_t Size() const { return size_; }
  bool Empty() const { return size_ == 0; }
  std::size_t ChunkCount() const { return CountChunks(Root()); }
  ChunkView Chunk(std::size_t number) const;
  /// The chunk itself, nothing of which has been read yet: for asking for its memory.
  const PointChunk& ChunkToCome(std::size_t number) const;
  /// Extremes of stored Y of one chunk: O(1) after the first time.
  YExtremes ChunkExtremes(std::size_t number) const { return ChunkToCome(number).Extremes(); }
  /// X of the chunk's first point, without a look into the chunk.
  double ChunkFirstX(std::size_t number) const;
  std::size_t ChunkOfIndex(std::size_t index) const;
  Point At(std::size_t index) const { return At(PlaceOf(index)); }
  Point Front() const { return At(0); }
  /// X of the last point; the chain must not be empty.
  double LastX() const { return last_x_; }
  /// Index of the first point with X >= x; Size() when there is none.
  std::size_t LowerBound(double x) const { return IndexOf(LowerPlace(x)); }
  /// Index of the first point with X > x; Size() when there is none.
  std::size_t UpperBound(double x) const { return IndexOf(PlaceAbove(Root(), x)); }
  /// Calls visitor(ChunkView) for every chunk in order.
  template <class Visitor>
  void ForEachChunk(Visitor&& visitor) const;
  /// Calls visitor(x, y) for every point in order.
  template <class Visitor>
  void ForEachPoint(Visitor&& visitor) const;
  /// True when both are copies of one chain, neither edited since.
  bool SharesAllWith(const PointChain& other) const { return &Root() == &other.Root(); }

  // --- places
  Place End() const { return {Root().groups.size(), 0, 0}; }
  /// Of the first point with X >= x; the end when there is none.
  Place LowerPlace(double x) const { return PlaceNotBelow(Root(), x); }
  /// The end for an index that is none.
  Place PlaceOf(std::size_t index) const;
  std::size_t IndexOf(const Place& place) const { return IndexOfPlace(Root(), place); }
  Place Next(const Place& place) const { return PlaceBehind(Root(), place); }
  double X(const Place& place) const { return ChunkAt(Root(), place).X()[place.offset]; }
  Point At(const Place& place) const { return ChunkAt(Root(), place).At(place.offset); }

  // --- editing. The caller keeps X ascending; ids are its business too.
  void Append(std::int32_t id, double x, double y);
  void Append(const Point& point);
  /// Appends points with the ids first_id, first_id + 1, … ; x ascending and not below LastX().
  void AppendRun(std::int32_t first_id, std::span<const double> x, std::span<const double> y);
  /// Inserts a point directly before `place`.
  void Insert(const Place& place, const Point& point);
  /// What became of a point given to PlaceLate.
  enum class Late { NotTaken, Inserted, Overwrote };
  /// Inserts a point before the first one with X >= x, at a time of the chain's choosing; x is not above LastX(). Where
  /// duplicates are forbidden it overwrites X and Y of the first point with that X, if there is one, and `id` is not used.
  /// A point that is not taken has to be placed in the ordinary way.
  Late PlaceLate(std::int32_t id, double x, double y, Duplicates duplicates);
  /// Overwrites X and Y of a point that keeps its id and its place.
  void Set(const Place& place, double x, double y);
  void Erase(const Place& place);
  void Clear();
  /// Adds dx to every X.
  void ShiftX(double dx);
  /// Lets `fill` write the regression values chunk by chunk, in order; the span has the length of the chunk.
  void FillRegression(const std::function<void(const ChunkView&, std::span<double>)>& fill);
  void ClearRegression();

 private:
  // Everything that reads goes through here, so that no point waits any longer.
  const ChunkRoot& Root() const {
    Settle();
    return *root_;
  }
  ChunkRoot& EditRoot() {
    Settle();
    return root_.Edit();
  }
  void Settle() const {
    if (late_ != nullptr && late_->IsOpen()) SettleLate();
  }
  void SettleLate() const;
  void OpenLate(Duplicates duplicates);
  bool AppendLate(std::int32_t id, double x, double y);
  void AddLate(std::int32_t id, double x, double y);
  bool OverwriteLate(double x, double y);

  ChunkView View(const Place& place) const;

  mutable CowPtr<ChunkRoot> root_;    // changed in reading only by merging the points that wait
  std::unique_ptr<LatePoints> late_;  // null until points come out of order
  std::size_t size_ = 0;              // with those that wait, and so is last_x_
  double last_x_ = 0;
  IdRoom last_id_room_ = IdRoom::No;  // what appended chunks are opened with
};

template <class Visitor>
void PointChain::ForEachChunk(Visitor&& visitor) const {
  const ChunkRoot& root = Root();
  for (std::size_t group = 0; group < root.groups.size(); ++group) {
    for (std::size_t chunk = 0; chunk < root.groups[group]->chunks.size(); ++chunk) {
      visitor(View({group, chunk, 0}));
    }
  }
}

template <class Visitor>
void PointChain::ForEachPoint(Visitor&& visitor) const {
  ForEachChunk([&visitor](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) visitor(chunk.x[i], chunk.y[i]);
  });
}

}  // namespace tarnwick
