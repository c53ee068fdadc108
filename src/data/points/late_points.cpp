#include "data/points/late_points.h"

#include <algorithm>

namespace tarnwick {

namespace {

// Waiting begins after so many inserts at least, and the more the longer the chain: it passes over the whole chain.
constexpr std::size_t kFewInserts = 64;
constexpr std::size_t kPointsPerInsert = 8;
// It pays when more points wait than this part of the chain, else it is tried again after so many times the inserts.
constexpr std::size_t kPays = 4;
constexpr std::size_t kPatience = 4;
constexpr std::size_t kLeastRoom = 4096;
constexpr std::size_t kMostRoom = std::size_t{1} << 22;

}  // namespace

bool LatePoints::Due(std::size_t points) {
  ++inserts_;
  if (goes_on_) return inserts_ > kFewInserts;
  return inserts_ > std::max(points / kPointsPerInsert + kFewInserts, least_inserts_);
}

void LatePoints::Open(std::size_t points, Duplicates duplicates) {
  points_ = points;
  room_ = std::clamp(3 * points, kLeastRoom, kMostRoom);
  x_.reserve(room_);
  y_.reserve(room_);
  if (duplicates == Duplicates::Forbidden) {
    filter_.emplace(points + room_);
    heads_.assign(room_, kNone);
    next_.reserve(room_);
  }
  open_.store(true, std::memory_order_release);
}

// Who looks at the points after every few of them makes each next wait longer.
void LatePoints::Close() {
  goes_on_ = x_.size() > points_ / kPays;
  least_inserts_ = goes_on_ ? 0 : kPatience * std::max(inserts_, least_inserts_);
  inserts_ = Full() ? kFewInserts : 0;
  x_ = {};
  y_ = {};
  filter_.reset();
  heads_ = {};
  next_ = {};
  open_.store(false, std::memory_order_release);
}

void LatePoints::Add(std::int32_t id, double x, double y) {
  if (x_.empty()) first_id_ = id;
  if (ForbidsDuplicates()) {
    std::uint32_t& head = HeadFor(x);
    next_.push_back(head);
    head = static_cast<std::uint32_t>(x_.size());
  }
  x_.push_back(x);
  y_.push_back(y);
}

bool LatePoints::Overwrite(double x, double y) {
  for (std::uint32_t i = HeadFor(x); i != kNone; i = next_[i]) {
    if (x_[i] != x) continue;
    x_[i] = x;  // the other zero, may be
    y_[i] = y;
    return true;
  }
  return false;
}

}  // namespace tarnwick
