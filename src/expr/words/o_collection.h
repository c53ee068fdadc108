// Growable lists of objects: TOCollection owns its items, TNoOwnerCollection only points at them. They know nothing of
// what the items are.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace tarnwick {

/// Owns its items. Whoever overrides FreeItem clears the list in the destructor of his own class, while his FreeItem
/// still stands.
template <class T>
class TOCollection {
 public:
  explicit TOCollection(std::size_t capacity = 0) { items_.reserve(capacity); }
  virtual ~TOCollection() { Clear(); }
  TOCollection(const TOCollection&) = delete;
  TOCollection& operator=(const TOCollection&) = delete;

  /// Disposes of an item that leaves the list for good.
  virtual void FreeItem(T* item) { std::default_delete<T>()(item); }

  std::size_t Count() const { return items_.size(); }
  /// The item at `index`, which must be below Count().
  T& operator[](std::size_t index) const { return *items_[index]; }
  auto begin() const { return items_.begin(); }
  auto end() const { return items_.end(); }

  /// Appends the item and owns it from here on.
  void Add(std::unique_ptr<T> item) {
    items_.push_back(item.get());
    item.release();  // NOLINT(bugprone-unused-return-value): the list holds it now
  }

  /// Hands every item over to the end of `other`.
  void MoveTo(TOCollection& other) {
    other.items_.insert(other.items_.end(), items_.begin(), items_.end());
    items_.clear();
  }

  /// Frees every item in the order of the list, then empties it.
  void Clear() {
    for (T* const item : items_) FreeItem(item);
    items_.clear();
  }

 protected:
  std::vector<T*> items_;
};

/// Items that live elsewhere: clearing or destroying the list leaves them alive.
template <class T>
class TNoOwnerCollection : public TOCollection<T> {
 public:
  using TOCollection<T>::TOCollection;
  ~TNoOwnerCollection() override { this->Clear(); }

  void FreeItem(T* /*item*/) override {}

  void Add(std::unique_ptr<T> item) = delete;
  /// Appends a reference; the item must outlive its stay in the list.
  void Add(T& item) { this->items_.push_back(&item); }
};

}  // namespace tarnwick
