#include "graph/thinning/row_bits.h"

#include <algorithm>
#include <bit>

namespace tarnwick {

namespace {

// Calls combine(distance) so that each bit, with itself and the results before, meets `count` neighbours `step` apart: a run
// twice as long at every call.
template <class Combine>
void Doubling(std::size_t count, std::size_t step, Combine&& combine) {
  for (std::size_t met = 1; met < count;) {
    const std::size_t more = std::min(met, count - met);
    combine(more * step);
    met += more;
  }
}

}  // namespace

bool RowBits::AllSet(std::size_t first, std::size_t last) const {
  constexpr std::uint64_t kAll = ~std::uint64_t{0};
  const std::size_t last_word = last / kWord;
  std::uint64_t wanted = kAll << first % kWord;
  for (std::size_t word = first / kWord; word < last_word; ++word, wanted = kAll) {
    if ((words_[word] & wanted) != wanted) return false;
  }
  wanted &= kAll >> (kWord - 1 - last % kWord);
  return (words_[last_word] & wanted) == wanted;
}

std::size_t RowBits::UnsetBefore(std::size_t bit) const {
  std::size_t word = bit / kWord;
  std::uint64_t unset = ~words_[word] & ((std::uint64_t{1} << bit % kWord) - 1);
  while (unset == 0) unset = ~words_[--word];
  return word * kWord + static_cast<std::size_t>(std::bit_width(unset)) - 1;
}

std::size_t RowBits::UnsetBehind(std::size_t bit) const {
  std::size_t word = bit / kWord;
  std::uint64_t unset = ~words_[word] & ~std::uint64_t{0} << bit % kWord;
  while (unset == 0) unset = ~words_[++word];
  return word * kWord + static_cast<std::size_t>(std::countr_zero(unset));
}

std::uint64_t RowBits::MovedFront(std::size_t word, std::size_t by) const {
  const std::size_t from = word + by / kWord, bits = by % kWord;
  if (from >= words_.size()) return 0;
  if (bits == 0) return words_[from];
  const std::uint64_t behind = from + 1 < words_.size() ? words_[from + 1] : 0;
  return words_[from] >> bits | behind << (kWord - bits);
}

std::uint64_t RowBits::MovedBack(std::size_t word, std::size_t by) const {
  const std::size_t words = by / kWord, bits = by % kWord;
  if (words > word) return 0;
  const std::size_t from = word - words;
  if (bits == 0) return words_[from];
  const std::uint64_t before = from > 0 ? words_[from - 1] : 0;
  return words_[from] << bits | before >> (kWord - bits);
}

// In place: a word is changed after all that are combined from it.
void RowBits::SetAfterAny(std::size_t count, std::size_t step) {
  Doubling(count, step, [this](std::size_t distance) {
    for (std::size_t word = words_.size(); word-- > 0;) words_[word] |= MovedBack(word, distance);
  });
}

void RowBits::KeepBeforeAll(std::size_t count, std::size_t step) {
  Doubling(count, step, [this](std::size_t distance) {
    for (std::size_t word = 0; word < words_.size(); ++word)
      words_[word] &= MovedFront(word, distance);
  });
}

void RowBits::MoveBack(std::size_t by) {
  for (std::size_t word = words_.size(); word-- > 0;) words_[word] = MovedBack(word, by);
}

}  // namespace tarnwick
