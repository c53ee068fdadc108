#include "data/point_chunk.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <numeric>

namespace tarnwick {

namespace {

// X of the first point starts a line of the processor's cache.
constexpr std::align_val_t kAlignment{64};

// Moves the values from `offset` to the end of `size` values one place back.
template <class T>
void OpenGap(T* values, std::size_t offset, std::size_t size) {
  std::memmove(values + offset + 1, values + offset, (size - offset) * sizeof(T));
}

template <class T>
void CloseGap(T* values, std::size_t offset, std::size_t size) {
  std::memmove(values + offset, values + offset + 1, (size - offset - 1) * sizeof(T));
}

}  // namespace

std::unique_ptr<PointChunk> PointChunk::Make(std::size_t room, IdRoom id_room) {
  static_assert(sizeof(PointChunk) == 64);
  const std::size_t per_point =
      2 * sizeof(double) + (id_room == IdRoom::Yes ? sizeof(std::int32_t) : 0);
  void* const memory = ::operator new(sizeof(PointChunk) + room * per_point, kAlignment);
  return std::unique_ptr<PointChunk>(::new (memory) PointChunk(room, id_room));
}

void PointChunk::operator delete(void* memory) {
  ::operator delete(memory, kAlignment);
}

std::unique_ptr<PointChunk> PointChunk::Clone(std::size_t room, IdRoom id_room) const {
  auto copy = Make(room, ids_spelled_ ? IdRoom::Yes : id_room);
  copy->size_ = size_;
  copy->first_id_ = first_id_;
  copy->ids_spelled_ = ids_spelled_;
  copy->regression_ = regression_;
  std::copy_n(X().data(), size_, copy->Doubles());
  std::copy_n(Y().data(), size_, copy->Doubles() + room);
  if (ids_spelled_) std::copy_n(Ids(), size_, copy->Ids());
  return copy;
}

std::unique_ptr<PointChunk> PointChunk::Part(std::size_t begin, std::size_t end,
                                             std::size_t room) const {
  auto part = Make(room, IdRoom::Yes);
  part->size_ = static_cast<std::uint32_t>(end - begin);
  part->first_id_ = Id(begin);
  part->ids_spelled_ = ids_spelled_;
  std::copy_n(X().data() + begin, end - begin, part->Doubles());
  std::copy_n(Y().data() + begin, end - begin, part->Doubles() + room);
  if (ids_spelled_) std::copy_n(Ids() + begin, end - begin, part->Ids());
  if (!regression_.empty()) {
    const auto values = Regression().subspan(begin, end - begin);
    part->regression_.assign(values.begin(), values.end());
  }
  return part;
}

Point PointChunk::At(std::size_t offset) const {
  return {Id(offset), X()[offset], Y()[offset], regression_.empty() ? 0 : regression_[offset]};
}

std::size_t PointChunk::OffsetOfId(std::int32_t id) const {
  if (!ids_spelled_) {
    const std::int64_t offset = std::int64_t{id} - first_id_;
    return offset >= 0 && offset < size_ ? static_cast<std::size_t>(offset) : size_;
  }
  return static_cast<std::size_t>(std::find(Ids(), Ids() + size_, id) - Ids());
}

YExtremes PointChunk::Extremes() const {
  if (!extremes_known_.load(std::memory_order_acquire)) {
    const YExtremes found = ExtremesOf(Y());
    y_min_.store(found.min, std::memory_order_relaxed);
    y_max_.store(found.max, std::memory_order_relaxed);
    y_gaps_.store(found.gaps, std::memory_order_relaxed);
    extremes_known_.store(true, std::memory_order_release);
  }
  return {y_min_.load(std::memory_order_relaxed), y_max_.load(std::memory_order_relaxed),
          y_gaps_.load(std::memory_order_relaxed)};
}

void PointChunk::AppendRun(std::int32_t first_id, const double* x, const double* y,
                           std::size_t count) {
  if (size_ == 0) {
    first_id_ = first_id;
  } else if (!IdFollows(first_id)) {
    SpellOutIds();
    std::iota(Ids() + size_, Ids() + size_ + count, first_id);
  }
  std::copy_n(x, count, Doubles() + size_);
  std::copy_n(y, count, Doubles() + room_ + size_);
  size_ += static_cast<std::uint32_t>(count);
  if (!regression_.empty()) regression_.resize(size_);
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Insert(std::size_t offset, const Point& point) {
  SpellOutIds();
  OpenGap(Doubles(), offset, size_);
  OpenGap(Doubles() + room_, offset, size_);
  OpenGap(Ids(), offset, size_);
  Doubles()[offset] = point.x;
  Doubles()[room_ + offset] = point.y;
  Ids()[offset] = point.id;
  ++size_;
  if (!regression_.empty()) {
    regression_.insert(regression_.begin() + static_cast<std::ptrdiff_t>(offset), point.regression);
  } else if (point.regression != 0) {
    EditRegression()[offset] = point.regression;
  }
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Set(std::size_t offset, double x, double y) {
  Doubles()[offset] = x;
  Doubles()[room_ + offset] = y;
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Erase(std::size_t offset) {
  if (!ids_spelled_ && offset == 0) {
    ++first_id_;
  } else if (offset + 1 < size_) {
    SpellOutIds();
  }
  CloseGap(Doubles(), offset, size_);
  CloseGap(Doubles() + room_, offset, size_);
  if (ids_spelled_) CloseGap(Ids(), offset, size_);
  if (!regression_.empty()) {
    regression_.erase(regression_.begin() + static_cast<std::ptrdiff_t>(offset));
  }
  --size_;
  extremes_known_.store(false, std::memory_order_relaxed);
}

void PointChunk::Shift(double dx) {
  for (std::size_t i = 0; i < size_; ++i) Doubles()[i] += dx;
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
  if (ids_spelled_) return;
  std::iota(Ids(), Ids() + size_, first_id_);
  ids_spelled_ = true;
}

}  // namespace tarnwick
