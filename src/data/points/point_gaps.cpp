#include "data/points/point_gaps.h"

#include <algorithm>
#include <utility>

namespace tarnwick {

PointGaps::PointGaps(std::vector<std::int32_t> begins, std::int32_t last) {
  if (begins.empty()) return;
  begins_ = std::make_shared<const std::vector<std::int32_t>>(std::move(begins));
  last_ = last;
}

std::span<const std::int32_t> PointGaps::Begins() const {
  return begins_ == nullptr ? std::span<const std::int32_t>{} : std::span(*begins_);
}

bool PointGaps::Between(std::int32_t one, std::int32_t other) const {
  const auto [low, high] = std::minmax(one, other);
  if (Empty() || high > last_) return false;
  const auto next = std::upper_bound(begins_->begin(), begins_->end(), low);
  return next != begins_->end() && *next <= high;
}

bool PointGaps::operator==(const PointGaps& other) const {
  return last_ == other.last_ &&
         (begins_ == other.begins_ || std::ranges::equal(Begins(), other.Begins()));
}

}  // namespace tarnwick
