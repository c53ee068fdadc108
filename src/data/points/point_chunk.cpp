#include "data/points/point_chunk.h"

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
  const std::size_t bytes =
      sizeof(PointChunk) + BytesOfPoints(room, id_room) + 2 * BlockCount(room) * sizeof(double);
  void* const memory = ::operator new(bytes, kAlignment);
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

// Another thread may be at it: then it is left to that one.
YExtremes PointChunk::KeepExtremes() const {
  Kept expected = Kept::No;
  if (!extremes_kept_.compare_exchange_strong(expected, Kept::BeingWritten,
                                              std::memory_order_acquire)) {
    return ExtremesOf(Y());
  }
  YExtremes all = ExtremesOf({});
  for (std::size_t begin = 0; begin < size_; begin += kBlock) {
    const YExtremes block = ExtremesOf(Y().subspan(begin, std::min(kBlock, size_ - begin)));
    all.Widen(block);
    if (BlockCount(room_) == 0) continue;
    BlockLows()[begin / kBlock] = block.min;
    BlockHighs()[begin / kBlock] = block.max;
  }
  y_min_ = all.min;
  y_max_ = all.max;
  y_gaps_ = all.gaps;
  extremes_kept_.store(Kept::Yes, std::memory_order_release);
  return all;
}

PointChunk::Blocks PointChunk::KeptBlocks() const {
  if (BlockCount(room_) == 0) return {};
  Extremes();
  if (extremes_kept_.load(std::memory_order_acquire) != Kept::Yes) return {};
  const std::size_t count = (size_ + kBlock - 1) / kBlock;
  return {{BlockLows(), count}, {BlockHighs(), count}};
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
  ForgetExtremes();
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
  ForgetExtremes();
}

void PointChunk::Set(std::size_t offset, double x, double y) {
  Doubles()[offset] = x;
  Doubles()[room_ + offset] = y;
  ForgetExtremes();
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
  ForgetExtremes();
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
