// Bits in words against bits one by one.
#include "graph/thinning/row_bits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace tarnwick {
namespace {

using Bits = std::vector<bool>;

Bits Read(const RowBits& bits, std::size_t size) {
  Bits read(size);
  bits.ForEach([&](std::size_t bit) { read.at(bit) = true; });
  return read;
}

TEST(RowBits, CombineAsSingleBitsDo) {
  std::mt19937 random(4);
  for (int round = 0; round < 300; ++round) {
    const std::size_t size = RowBits::kWord * (1 + random() % 4), by = random() % 80;
    const std::size_t count = 1 + random() % 9, step = 1 + random() % 70;
    Bits bits(size), after(size), before(size), moved(size);
    RowBits packed(size);
    const std::size_t gaps = 2 + random() % 30;
    for (std::size_t i = 0; i < size; ++i) {
      bits[i] = (random() % gaps != 0) == (round % 2 == 0);
      if (bits[i] || i == 7) packed.Set(i);
    }
    if (!bits[7]) packed.Reset(7);
    for (std::size_t i = 0; i < size; ++i) {
      const auto at = [&](std::size_t bit) { return bit < size && bits[bit]; };
      before[i] = true;
      for (std::size_t k = 0; k < count; ++k) {
        after[i] = after[i] || (i >= k * step && at(i - k * step));
        before[i] = before[i] && at(i + k * step);
      }
      moved[i] = i >= by && at(i - by);
      const auto all = std::all_of(bits.begin() + static_cast<std::ptrdiff_t>(size / 3),
                                   bits.begin() + static_cast<std::ptrdiff_t>(size / 3 + count),
                                   [](bool bit) { return bit; });
      EXPECT_EQ(packed.AllSet(size / 3, size / 3 + count - 1), all);
      if (!bits[i]) continue;
      const auto here = bits.begin() + static_cast<std::ptrdiff_t>(i);
      if (const auto unset = std::find(here, bits.end(), false); unset != bits.end()) {
        EXPECT_EQ(packed.UnsetBehind(i), static_cast<std::size_t>(unset - bits.begin()));
      }
      if (const auto unset = std::find(std::reverse_iterator(here), bits.rend(), false);
          unset != bits.rend()) {
        EXPECT_EQ(packed.UnsetBefore(i), static_cast<std::size_t>(bits.rend() - unset - 1));
      }
    }
    ASSERT_EQ(Read(packed, size), bits);
    RowBits changed = packed;
    changed.SetAfterAny(count, step);
    EXPECT_EQ(Read(changed, size), after) << count << ' ' << step;
    changed = packed;
    changed.KeepBeforeAll(count, step);
    EXPECT_EQ(Read(changed, size), before) << count << ' ' << step;
    changed = packed;
    changed.MoveBack(by);
    EXPECT_EQ(Read(changed, size), moved) << by;
  }
}

}  // namespace
}  // namespace tarnwick
