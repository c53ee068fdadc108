// The storage below PointChain: a chunk of neighbouring points. Knows how they lie in memory; knows neither the chunks beside
// it nor when it is split.
#pragma once

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "data/points/cow_ptr.h"
#include "data/points/y_extremes.h"

namespace tarnwick {

/// One stored point. `y` is the stored ordinate, not corrected by the base line.
struct Point {
  std::int32_t id = 0;
  double x = 0;
  double y = 0;
  double regression = 0;
};

/// Whether a chunk has room for an id of its own for every point.
enum class IdRoom : std::uint8_t { No, Yes };

/// A run of neighbouring points as a structure of arrays. X, Y and ids lie right behind the object in the same block of memory,
/// so that a search meets one distant place in memory, not four. The room of a chunk is fixed: for more, clone it.
class PointChunk : public CowCounted {
 public:
  static constexpr std::size_t kCapacity = 512;  ///< the most points a chunk is given
  /// A chunk into which points are inserted is kept this small, so that an insert moves little. Appended chunks fill up.
  static constexpr std::size_t kInsertCapacity = 96;

  static std::unique_ptr<PointChunk> Make(std::size_t room, IdRoom id_room);
  static void operator delete(void* memory);
  PointChunk(const PointChunk&) = delete;
  std::unique_ptr<PointChunk> Clone() const { return Clone(room_, HasIdRoom()); }
  /// A copy with room for `room` points, at least Size().
  std::unique_ptr<PointChunk> Clone(std::size_t room, IdRoom id_room) const;

  /// Asks for the chunk's memory ahead of a search and, most likely, an insert. `points` is Size(), which is not read.
  void Prefetch(std::size_t points) const {
    constexpr std::size_t kLine = 64;
    if (points > kInsertCapacity) return;
    const auto* const bytes = reinterpret_cast<const char*>(this);
    constexpr std::size_t kPerPoint = 2 * sizeof(double) + sizeof(std::int32_t);
    for (std::size_t i = 0; i < sizeof(PointChunk) + kInsertCapacity * kPerPoint; i += kLine) {
      __builtin_prefetch(bytes + i);
    }
  }

  /// Asks for X at the offset and some Y on either side. The chunk, of which nothing is read, is taken to have that room.
  void PrefetchAround(std::size_t offset, std::size_t room) const {
    constexpr std::size_t kLine = 64 / sizeof(double), kLines = 4;
    if (room < kLine * kLines) return;
    const double* const x = Doubles();
    __builtin_prefetch(x + std::min(offset, room - 1));
    const std::size_t before = offset - std::min(offset, kLine * kLines / 2);
    const double* const y = x + room + std::min(before, room - kLine * kLines);
    for (std::size_t line = 0; line < kLines; ++line) __builtin_prefetch(y + line * kLine);
  }
  /// Likewise for what tells the extremes of parts of it.
  void PrefetchExtremes(std::size_t room, IdRoom id_room) const {
    constexpr std::size_t kLine = 64;
    __builtin_prefetch(this);
    const auto* const bytes =
        reinterpret_cast<const char*>(this + 1) + BytesOfPoints(room, id_room);
    for (std::size_t i = 0; i < 2 * BlockCount(room) * sizeof(double); i += kLine) {
      __builtin_prefetch(bytes + i);
    }
  }

  std::size_t Size() const { return size_; }
  std::size_t Room() const { return room_; }
  IdRoom HasIdRoom() const { return id_room_; }
  const double* XData() const { return Doubles(); }
  std::span<const double> X() const { return {Doubles(), size_}; }
  std::span<const double> Y() const { return {Doubles() + room_, size_}; }
  /// Empty while every value is 0.
  std::span<const double> Regression() const { return regression_; }
  std::int32_t Id(std::size_t offset) const {
    return ids_spelled_ ? Ids()[offset] : first_id_ + static_cast<std::int32_t>(offset);
  }
  /// True when each id surely is one above the id before.
  bool IdsAreRun() const { return !ids_spelled_; }
  Point At(std::size_t offset) const;
  /// The offset of the point with that id; Size() when there is none.
  std::size_t OffsetOfId(std::int32_t id) const;
  /// Computed when first asked for; safe to ask from several threads.
  YExtremes Extremes() const {
    if (extremes_kept_.load(std::memory_order_acquire) != Kept::Yes) return KeepExtremes();
    return {y_min_, y_max_, y_gaps_};
  }
  /// Over the points begin <= i < end, for most of them by what Extremes() keeps.
  YExtremes Extremes(std::size_t begin, std::size_t end) const {
    if (end - begin > 2 * kBlock && BlockCount(room_) != 0) Extremes();
    const bool kept = extremes_kept_.load(std::memory_order_acquire) == Kept::Yes;
    return kept && !y_gaps_ ? PlainExtremesOf(begin, end)
                            : ExtremesOf(Y().subspan(begin, end - begin));
  }
  static constexpr std::size_t kBlock = 32;  ///< points whose extremes are kept together
  /// The lowest and the highest Y, NaN left out, of each kBlock points in turn; the last block may have fewer.
  struct Blocks {
    std::span<const double> lows;
    std::span<const double> highs;
  };
  /// Both empty for a small chunk, or while another thread works them out.
  Blocks KeptBlocks() const;

  // Editing. Adding needs room for the points; an id that does not follow the one before, inserting and erasing in the
  // middle need room for ids.
  bool IdFollows(std::int32_t id) const {
    return size_ == 0 || (!ids_spelled_ && id == first_id_ + static_cast<std::int32_t>(size_));
  }
  void Append(std::int32_t id, double x, double y) {
    if (size_ == 0) {
      first_id_ = id;
    } else if (!IdFollows(id)) {
      SpellOutIds();
      Ids()[size_] = id;
    }
    Doubles()[size_] = x;
    Doubles()[room_ + size_] = y;
    ++size_;
    if (!regression_.empty()) regression_.push_back(0);
    ForgetExtremes();
  }
  /// Points with the ids first_id, first_id + 1, …
  void AppendRun(std::int32_t first_id, const double* x, const double* y, std::size_t count);
  void Insert(std::size_t offset, const Point& point);
  void Set(std::size_t offset, double x, double y);
  void Erase(std::size_t offset);
  /// A new chunk with the points from `begin` to `end` and room for more.
  std::unique_ptr<PointChunk> Part(std::size_t begin, std::size_t end, std::size_t room) const;
  void Shift(double dx);
  /// The regression values for writing, all of them present.
  std::vector<double>& EditRegression();
  /// Drops the regression values when all are 0.
  void TidyRegression();
  void ClearRegression() { regression_ = {}; }

 private:
  PointChunk(std::size_t room, IdRoom id_room)
      : room_(static_cast<std::uint32_t>(room)), id_room_(id_room) {}

  enum class Kept : std::uint8_t { No, BeingWritten, Yes };

  // Small chunks are read as fast as their blocks would be.
  static constexpr std::size_t BlockCount(std::size_t room) {
    return room <= kInsertCapacity ? 0 : (room + kBlock - 1) / kBlock;
  }
  static constexpr std::size_t BytesOfPoints(std::size_t room, IdRoom id_room) {
    const std::size_t ids = id_room == IdRoom::Yes ? (room + 1) / 2 : 0;
    return (2 * room + ids) * sizeof(double);
  }

  // The memory behind the object: X, then Y, then the ids, each for room_ points; then the lowest Y of each block, then the
  // highest.
  double* Doubles() { return reinterpret_cast<double*>(this + 1); }
  const double* Doubles() const { return reinterpret_cast<const double*>(this + 1); }
  std::int32_t* Ids() {
    return reinterpret_cast<std::int32_t*>(Doubles() + 2 * std::size_t{room_});
  }
  const std::int32_t* Ids() const {
    return reinterpret_cast<const std::int32_t*>(Doubles() + 2 * std::size_t{room_});
  }
  double* BlockLows() const {
    const auto* const end =
        reinterpret_cast<const char*>(this + 1) + BytesOfPoints(room_, id_room_);
    return const_cast<double*>(reinterpret_cast<const double*>(end));
  }
  double* BlockHighs() const { return BlockLows() + BlockCount(room_); }
  YExtremes KeepExtremes() const;
  YExtremes PlainExtremesOf(std::size_t begin, std::size_t end) const {
    PlainExtremes range;
    const std::size_t first = (begin + kBlock - 1) / kBlock, last = end / kBlock;
    const double* const y = Y().data();
    if (first >= last || BlockCount(room_) == 0) {
      range.Take(y + begin, end - begin);
    } else {
      range.Take(y + begin, first * kBlock - begin);
      range.Take(BlockLows() + first, BlockHighs() + first, last - first);
      range.Take(y + last * kBlock, end - last * kBlock);
    }
    return range.Result();
  }
  void ForgetExtremes() { extremes_kept_.store(Kept::No, std::memory_order_relaxed); }
  void SpellOutIds();

  std::uint32_t size_ = 0;
  std::uint32_t room_;
  std::int32_t first_id_ = 0;
  IdRoom id_room_;
  bool ids_spelled_ = false;  // else they are first_id_, first_id_ + 1, …
  mutable std::atomic<Kept> extremes_kept_{Kept::No};
  mutable bool y_gaps_ = false;  // this and what follows say something when the extremes are kept
  mutable double y_min_ = 0;
  mutable double y_max_ = 0;
  std::vector<double> regression_;
};

}  // namespace tarnwick
