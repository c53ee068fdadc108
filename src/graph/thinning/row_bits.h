// Rows of pixels as bits, and runs of them: one column, or all columns of an area one behind the other. Knows bits only.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

class RowBits {
 public:
  RowBits() = default;
  explicit RowBits(std::size_t bits) : words_((bits + kWord - 1) / kWord) {}

  void Clear() { words_.assign(words_.size(), 0); }
  void Set(std::size_t bit) { words_[bit / kWord] |= std::uint64_t{1} << bit % kWord; }
  /// All of first <= bit <= last.
  void SetRange(std::size_t first, std::size_t last) {
    std::uint64_t wanted = ~std::uint64_t{0} << first % kWord;
    const std::size_t last_word = last / kWord;
    for (std::size_t word = first / kWord; word < last_word; ++word) {
      words_[word] |= wanted;
      wanted = ~std::uint64_t{0};
    }
    words_[last_word] |= wanted & ~std::uint64_t{0} >> (kWord - 1 - last % kWord);
  }
  void Reset(std::size_t bit) { words_[bit / kWord] &= ~(std::uint64_t{1} << bit % kWord); }
  /// Whether all of first <= bit <= last are set.
  bool AllSet(std::size_t first, std::size_t last) const;
  /// The nearest unset bit before or behind a set one; there must be one.
  std::size_t UnsetBefore(std::size_t bit) const;
  std::size_t UnsetBehind(std::size_t bit) const;
  /// Calls visitor(bit) for every bit set, in order.
  template <class Visitor>
  void ForEach(Visitor&& visitor) const {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      for (std::uint64_t left = words_[i]; left != 0; left &= left - 1) {
        visitor(i * kWord + static_cast<std::size_t>(std::countr_zero(left)));
      }
    }
  }
  /// Calls visitor(begin, end) for every run of bits set, in order; each must have an unset bit behind it.
  template <class Visitor>
  void ForEachRun(Visitor&& visitor) const {
    std::size_t end = 0;
    for (std::size_t i = 0; i < words_.size(); ++i) {
      const std::size_t passed = end > i * kWord ? end - i * kWord : 0;
      if (passed >= kWord) continue;
      std::uint64_t left = words_[i] & ~std::uint64_t{0} << passed;
      while (left != 0) {
        const std::size_t begin = i * kWord + static_cast<std::size_t>(std::countr_zero(left));
        end = UnsetBehind(begin);
        visitor(begin, end);
        if (end >= (i + 1) * kWord) break;
        left &= ~std::uint64_t{0} << end % kWord;
      }
    }
  }
  std::span<std::uint64_t> Words() { return words_; }
  std::span<const std::uint64_t> Words() const { return words_; }

  /// Sets each bit that has one of itself and the `count` - 1 bits `step` apart before it set.
  void SetAfterAny(std::size_t count, std::size_t step = 1);
  /// Keeps each bit that has itself and all of the `count` - 1 bits `step` apart behind it set. Behind the last are none.
  void KeepBeforeAll(std::size_t count, std::size_t step = 1);
  /// Moves all bits back; `by` unset ones come in front.
  void MoveBack(std::size_t by);

  static constexpr std::size_t kWord = 64;

 private:
  // The word's bits as they would stand after moving all bits to the front or to the back.
  std::uint64_t MovedFront(std::size_t word, std::size_t by) const;
  std::uint64_t MovedBack(std::size_t word, std::size_t by) const;

  std::vector<std::uint64_t> words_;
};

}  // namespace tarnwick
