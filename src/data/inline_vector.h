// A list of few values that lie in the object itself, so that whoever reaches the object has them without another walk through
// memory. Knows positions only; the owner sees to it that there is room.
#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <utility>

namespace tarnwick {

/// The part of std::vector's interface that its owners need. Values that were taken out are reset to T{}.
template <class T, std::size_t kRoom>
class InlineVector {
 public:
  using value_type = T;
  using iterator = T*;

  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  const T* data() const { return values_.data(); }
  T* begin() { return values_.data(); }
  T* end() { return values_.data() + size_; }
  const T* begin() const { return values_.data(); }
  const T* end() const { return values_.data() + size_; }
  T& operator[](std::size_t i) { return values_[i]; }
  const T& operator[](std::size_t i) const { return values_[i]; }
  T& front() { return values_[0]; }
  const T& front() const { return values_[0]; }
  T& back() { return values_[size_ - 1]; }
  const T& back() const { return values_[size_ - 1]; }

  /// Needs room for one more.
  void push_back(T value) {
    assert(size_ < kRoom);
    values_[size_++] = std::move(value);
  }
  /// Needs room for one more.
  void insert(T* position, T value) {
    assert(size_ < kRoom);
    std::move_backward(position, end(), end() + 1);
    *position = std::move(value);
    ++size_;
  }
  void erase(T* position) {
    std::move(position + 1, end(), position);
    values_[--size_] = T{};
  }
  /// To at most size().
  void shrink(std::size_t size) {
    while (size_ > size) values_[--size_] = T{};
  }

 private:
  std::size_t size_ = 0;
  std::array<T, kRoom> values_{};
};

}  // namespace tarnwick
