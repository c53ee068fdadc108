#include "data/point_chunk.h"

#include <algorithm>
#include <limits>
#include <numeric>

namespace tarnwick {

namespace {

using Difference = std::vector<double>::difference_type;

template <class T>
typename std::vector<T>::iterator IteratorAt(std::vector<T>& values, std::size_t offset) {
  return values.begin() + static_cast<Difference>(offset);
}

template <class T>
std::vector<T> TakeTail(std::vector<T>& values, std::size_t offset) {
  if (values.empty()) return {};
  std::vector<T> tail(IteratorAt(values, offset), values.end());
  values.resize(offset);
  if (values.capacity() > 4 * offset) values.shrink_to_fit();
  return tail;
}

// Four independent runs keep the comparisons from waiting for each other. A comparison with NaN is false.
YExtremes ScanExtremes(const std::vector<double>& values) {
  constexpr std::size_t kLanes = 4;
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  double min[kLanes] = {kInfinity, kInfinity, kInfinity, kInfinity};
  double max[kLanes] = {-kInfinity, -kInfinity, -kInfinity, -kInfinity};
  bool gaps = false;
  const auto widen = [&](std::size_t lane, double value) {
    min[lane] = value < min[lane] ? value : min[lane];
    max[lane] = value > max[lane] ? value : max[lane];
    gaps |= value != value;
  };
  std::size_t i = 0;
  for (; i + kLanes <= values.size(); i += kLanes) {
    for (std::size_t lane = 0; lane < kLanes; ++lane) widen(lane, values[i + lane]);
  }
  for (; i < values.size(); ++i) widen(0, values[i]);
  return {*std::min_element(min, min + kLanes), *std::max_element(max, max + kLanes), gaps};
}

}  // namespace

PointChunk::PointChunk(const PointChunk& other)
    : CowCounted(other),
      x_(other.x_),
      y_(other.y_),
      regression_(other.regression_),
      ids_(other.ids_),
      first_id_(other.first_id_) {}

Point PointChunk::At(std::size_t offset) const {
  return {Id(offset), x_[offset], y_[offset], regression_.empty() ? 0 : regression_[offset]};
}

std::size_t PointChunk::OffsetOfId(std::int32_t id) const {
  if (ids_.empty()) {
    const std::int64_t offset = std::int64_t{id} - first_id_;
    const auto size = static_cast<std::int64_t>(Size());
    return static_cast<std::size_t>(offset >= 0 && offset < size ? offset : size);
  }
  return static_cast<std::size_t>(std::find(ids_.begin(), ids_.end(), id) - ids_.begin());
}

YExtremes PointChunk::Extremes() const {
  if (!extremes_known_.load(std::memory_order_acquire)) {
    const YExtremes found = ScanExtremes(y_);
    y_min_.store(found.min, std::memory_order_relaxed);
    y_max_.store(found.max, std::memory_order_relaxed);
    y_gaps_.store(found.gaps, std::memory_order_relaxed);
    extremes_known_.store(true, std::memory_order_release);
  }
  return {y_min_.load(std::memory_order_relaxed), y_max_.load(std::memory_order_relaxed),
          y_gaps_.load(std::memory_order_relaxed)};
}

void PointChunk::Reserve(std::size_t points) {
  x_.reserve(points);
  y_.reserve(points);
  if (!regression_.empty()) regression_.reserve(points);
  if (!ids_.empty()) ids_.reserve(points);
}

void PointChunk::AppendRun(std::int32_t first_id, const double* x, const double* y,
                           std::size_t count) {
  if (count == 0) return;
  NoteId(first_id);
  for (std::size_t i = 1; !ids_.empty() && i < count; ++i) {
    ids_.push_back(first_id + static_cast<std::int32_t>(i));
  }
  x_.insert(x_.end(), x, x + count);
  y_.insert(y_.end(), y, y + count);
  if (!regression_.empty()) regression_.resize(x_.size());
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Insert(std::size_t offset, const Point& point) {
  if (offset == Size()) {
    NoteId(point.id);
  } else {
    SpellOutIds();
    ids_.insert(IteratorAt(ids_, offset), point.id);
  }
  x_.insert(IteratorAt(x_, offset), point.x);
  y_.insert(IteratorAt(y_, offset), point.y);
  if (!regression_.empty()) {
    regression_.insert(IteratorAt(regression_, offset), point.regression);
  } else if (point.regression != 0) {
    EditRegression()[offset] = point.regression;
  }
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Set(std::size_t offset, double x, double y) {
  x_[offset] = x;
  y_[offset] = y;
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Erase(std::size_t offset) {
  if (offset == 0 && ids_.empty()) {
    ++first_id_;
  } else if (offset + 1 < Size()) {
    SpellOutIds();
  }
  if (!ids_.empty()) ids_.erase(IteratorAt(ids_, offset));
  x_.erase(IteratorAt(x_, offset));
  y_.erase(IteratorAt(y_, offset));
  if (!regression_.empty()) regression_.erase(IteratorAt(regression_, offset));
  extremes_known_.store(false, std::memory_order_relaxed);
}

std::unique_ptr<PointChunk> PointChunk::SplitAt(std::size_t offset) {
  auto tail = std::make_unique<PointChunk>();
  tail->first_id_ = Id(offset);
  tail->x_ = TakeTail(x_, offset);
  tail->y_ = TakeTail(y_, offset);
  tail->regression_ = TakeTail(regression_, offset);
  tail->ids_ = TakeTail(ids_, offset);
  extremes_known_.store(false, std::memory_order_relaxed);
  return tail;
}

void PointChunk::Shift(double dx) {
  for (double& x : x_) x += dx;
}

std::vector<double>& PointChunk::EditRegression() {
  regression_.resize(Size());
  return regression_;
}

void PointChunk::TidyRegression() {
  const auto is_zero = [](double value) { return value == 0; };
  if (std::all_of(regression_.begin(), regression_.end(), is_zero)) ClearRegression();
}

void PointChunk::SpellOutIds() {
  if (!ids_.empty()) return;
  ids_.reserve(x_.capacity());
  ids_.resize(x_.size());
  std::iota(ids_.begin(), ids_.end(), first_id_);
}

}  // namespace tarnwick
