// Points that came out of order and wait to be merged into a chain all at once, which costs a third of placing each. Knows how
// long waiting pays and which abscissae it was told of; knows no chain.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "data/points/abscissa_filter.h"

namespace tarnwick {

/// Whether several points may stand at one abscissa.
enum class Duplicates { Forbidden, Allowed };

class LatePoints {
 public:
  /// Points are taken between Open and Close. Safe to ask while another thread closes.
  bool IsOpen() const { return open_.load(std::memory_order_acquire); }
  /// Held by whoever settles the points for readers in several threads.
  std::mutex& Settling() { return settling_; }

  /// Counts a point that is about to be placed in the middle of a chain of `points`. True when there were so many of them that
  /// waiting promises to pay.
  bool Due(std::size_t points);
  /// For a chain of `points`. Where duplicates are forbidden Note is to be told of every X, those of the chain first.
  void Open(std::size_t points, Duplicates duplicates);
  /// Drops the points.
  void Close();

  bool Full() const { return x_.size() == room_; }
  /// Whether a point with that id may be added: ids rise by 1.
  bool Takes(std::int32_t id) const {
    return !Full() && (x_.empty() || id == first_id_ + static_cast<std::int32_t>(x_.size()));
  }
  void Add(std::int32_t id, double x, double y);
  /// So many wait that rewriting the whole chain is quicker than placing each.
  bool AreMany() const { return x_.size() > points_ / kMany; }

  bool ForbidsDuplicates() const { return filter_.has_value(); }
  /// False when that X was surely not noted before. Only where duplicates are forbidden.
  bool Note(double x) { return filter_->Note(HashOfAbscissa(x)); }
  /// Overwrites the point that waits at that X; false when none does. Only where duplicates are forbidden.
  bool Overwrite(double x, double y);

  std::span<const double> X() const { return x_; }
  std::span<const double> Y() const { return y_; }
  std::int32_t FirstId() const { return first_id_; }

 private:
  static constexpr std::size_t kMany = 16;
  static constexpr std::uint32_t kNone = 0xFFFFFFFF;

  std::uint32_t& HeadFor(double x) {
    return heads_[((HashOfAbscissa(x) >> 32) * heads_.size()) >> 32];
  }

  std::mutex settling_;
  std::atomic<bool> open_{false};
  std::size_t inserts_ = 0;        // placed in the middle since the last closing
  std::size_t least_inserts_ = 0;  // before that many waiting does not pay
  bool goes_on_ = false;           // waiting paid, so more of the same is expected
  std::size_t points_ = 0;         // of the chain when this was opened
  std::size_t room_ = 0;
  std::int32_t first_id_ = 0;
  std::vector<double> x_;
  std::vector<double> y_;
  // Where duplicates are forbidden: every noted X, and which points wait under one hash.
  std::optional<AbscissaFilter> filter_;
  std::vector<std::uint32_t> heads_;  // the last of them, for each hash
  std::vector<std::uint32_t> next_;   // the one before, for each point
};

}  // namespace tarnwick
