// An owning list ordered by key. Knows how to search and insert; what a key is and how keys compare is up to its heirs.
#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <optional>
#include <utility>

#include "expr/words/o_collection.h"

namespace tarnwick {

/// Where a key stands, or where it would be inserted.
struct SearchResult {
  bool found = false;
  std::size_t index = 0;
};

/// The part of TSortedCollection that says what an item's key is.
template <class T, class Key>
class KeyedCollection : public TOCollection<T> {
 public:
  using TOCollection<T>::TOCollection;
  virtual Key KeyOf(const T& item) const = 0;
};

/// Where no other key type is named, the item itself is the key.
template <class T>
class KeyedCollection<T, const T&> : public TOCollection<T> {
 public:
  using TOCollection<T>::TOCollection;
  virtual const T& KeyOf(const T& item) const { return item; }
};

template <class T, class Key = const T&>
class TSortedCollection : public KeyedCollection<T, Key> {
 public:
  using KeyedCollection<T, Key>::KeyedCollection;

  bool Duplicates() const { return duplicates_; }
  /// Whether several items of one key may stand in the list.
  void SetDuplicates(bool duplicates) { duplicates_ = duplicates; }

  /// Negative, zero or positive as `key1` stands before, beside or after `key2`.
  virtual int Compare(Key key1, Key key2) const = 0;

  /// The position of this very item (with Duplicates) or of one with its key; nothing when there is none.
  virtual std::optional<std::size_t> IndexOf(const T& item) const {
    SearchResult place = Search(this->KeyOf(item));
    if (!place.found) return std::nullopt;
    if (!duplicates_) return place.index;
    while (place.index < this->Count() && this->items_[place.index] != &item) ++place.index;
    return place.index < this->Count() ? std::optional(place.index) : std::nullopt;
  }

  /// Puts the item in its place. Where its key is taken and duplicates are not allowed, the list stays as it is and the
  /// item is given back.
  virtual std::unique_ptr<T> Insert(std::unique_ptr<T> item) {
    const SearchResult place = Search(this->KeyOf(*item));
    if (place.found && !duplicates_) return item;
    this->items_.insert(Position(place.index), item.get());
    item.release();  // NOLINT(bugprone-unused-return-value): the list holds it now
    return nullptr;
  }

  /// Puts the item in the place of one with its key, which is given back, or inserts it when there is none.
  virtual std::unique_ptr<T> Replace(std::unique_ptr<T> item) {
    const SearchResult place = Search(this->KeyOf(*item));
    std::unique_ptr<T> old = place.found ? Detach(place.index) : nullptr;
    Insert(std::move(item));
    return old;
  }

  /// Binary search. With Duplicates the index is that of the first item with the key.
  virtual SearchResult Search(Key key) const {
    SearchResult place;
    std::ptrdiff_t low = 0;
    std::ptrdiff_t high = std::ssize(this->items_) - 1;
    while (low <= high) {
      const std::ptrdiff_t middle = (low + high) / 2;
      const int order = Compare(this->KeyOf(*this->items_[static_cast<std::size_t>(middle)]), key);
      if (order < 0) {
        low = middle + 1;
        continue;
      }
      high = middle - 1;
      if (order != 0) continue;
      place.found = true;
      if (!duplicates_) low = middle;
    }
    place.index = static_cast<std::size_t>(low);
    return place;
  }

  /// Takes an item out of the list without freeing it.
  std::unique_ptr<T> Detach(std::size_t index) {
    std::unique_ptr<T> item(this->items_[index]);
    this->items_.erase(Position(index));
    return item;
  }

 private:
  auto Position(std::size_t index) {
    return this->items_.begin() + static_cast<std::ptrdiff_t>(index);
  }

  bool duplicates_ = false;
};

}  // namespace tarnwick
