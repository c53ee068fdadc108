// A shared pointer to a value that is copied when it is edited while others hold it. Knows counting only. Readers in other
// threads are safe as long as each holds its own pointer.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <utility>

namespace tarnwick {

/// Base of what CowPtr holds: a type with `std::unique_ptr<T> Clone() const`. A copy starts with a count of its own.
class CowCounted {
 public:
  CowCounted() = default;
  CowCounted(const CowCounted&) {}
  CowCounted& operator=(const CowCounted&) = delete;

 private:
  template <class T>
  friend class CowPtr;
  std::atomic<std::uint32_t> holders_{1};
};

template <class T>
class CowPtr {
 public:
  CowPtr() = default;
  /// Takes over a value that nobody else holds.
  explicit CowPtr(std::unique_ptr<T> value) : value_(value.release()) {}
  CowPtr(const CowPtr& other) : value_(other.value_) {
    if (value_ != nullptr) value_->holders_.fetch_add(1, std::memory_order_relaxed);
  }
  CowPtr(CowPtr&& other) noexcept : value_(std::exchange(other.value_, nullptr)) {}
  CowPtr& operator=(CowPtr other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }
  ~CowPtr() {
    if (value_ == nullptr) return;
    if (value_->holders_.fetch_sub(1, std::memory_order_acq_rel) == 1) {
      const std::unique_ptr<T> last(value_);
    }
  }

  const T& operator*() const { return *value_; }
  const T* operator->() const { return value_; }

  /// The value for editing; a copy of it first when others hold it too.
  T& Edit() {
    // The acquire pairs with the release of the holder that let go last, whose reads must be over.
    if (value_->holders_.load(std::memory_order_acquire) != 1) {
      *this = CowPtr(std::as_const(*value_).Clone());
    }
    return *value_;
  }

 private:
  T* value_ = nullptr;
};

}  // namespace tarnwick
