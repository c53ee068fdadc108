#include "data/points/late_points.h"
#include "data/points/point_columns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>
#include <vector>

#include "data/points/point_chain.h"

namespace tarnwick {
namespace {

TEST(AbscissaFilter, ForgetsNothingAndTakesFewStrangersForKnown) {
  constexpr std::size_t kValues = 200000;
  AbscissaFilter filter(kValues);
  const auto note = [&filter](std::size_t i) {
    return filter.Note(HashOfAbscissa(0.001 * static_cast<double>(i)));
  };
  std::size_t mistaken = 0;
  for (std::size_t i = 0; i < kValues; ++i) mistaken += note(i) ? 1 : 0;
  EXPECT_LT(mistaken, kValues / 100);
  for (std::size_t i = 0; i < kValues; ++i) ASSERT_TRUE(note(i)) << i;
  EXPECT_EQ(HashOfAbscissa(-0.0), HashOfAbscissa(0.0));
}

TEST(LatePoints, WaitingIsTriedLessOftenTheLessItPays) {
  constexpr std::size_t kChain = 16000;
  const auto inserts_until_due = [](LatePoints& late) {
    std::size_t inserts = 1;
    while (!late.Due(kChain)) ++inserts;
    return inserts;
  };
  const auto wait_for = [](LatePoints& late, std::int32_t points) {
    late.Open(kChain, Duplicates::Allowed);
    for (std::int32_t id = 1; id <= points; ++id) late.Add(id, id, id);
    late.Close();
  };
  LatePoints late;
  const std::size_t at_first = inserts_until_due(late);
  wait_for(late, 10);
  const std::size_t then = inserts_until_due(late);
  EXPECT_GT(then, 2 * at_first);
  wait_for(late, 10);
  EXPECT_GT(inserts_until_due(late), 2 * then);
  wait_for(late, kChain);
  EXPECT_LT(inserts_until_due(late), at_first / 10);
  wait_for(late, 3 * kChain);  // all the room: more of the same is to be expected
  EXPECT_EQ(inserts_until_due(late), 1u);
}

// What a chain is given and when it is looked at.
struct LateRow {
  const char* name;
  Duplicates duplicates;
  int abscissae;   // so many different ones are drawn
  int look_every;  // points from one look at the chain to the next
  bool all_wait;   // so the points end up in full chunks
};

constexpr int kNever = 1 << 30;
constexpr int kHardlyAnyEqual = 1 << 30;
constexpr LateRow kLateRows[] = {
    {"never looked at", Duplicates::Forbidden, kHardlyAnyEqual, kNever, true},
    {"equal abscissae side by side", Duplicates::Allowed, 3000, kNever, true},
    {"some equal abscissae overwrite", Duplicates::Forbidden, 300000, kNever, true},
    {"looked at now and then", Duplicates::Forbidden, 100000, 7000, false},
    {"looked at now and then, equal ones side by side", Duplicates::Allowed, 100000, 7000, false},
    {"looked at after few", Duplicates::Forbidden, 300000, 150, false},
};

// A chain that may let points wait beside one that may not.
TEST(LatePoints, GiveWhatPlacingAtOnceGives) {
  for (const LateRow& row : kLateRows) {
    SCOPED_TRACE(row.name);
    const bool beside = row.duplicates == Duplicates::Allowed;
    std::mt19937 random(5);
    PointChain late;
    PointChain at_once;
    std::int32_t next_id = 1;
    for (int i = 0; i < 40000; ++i) {
      // One in twenty comes behind all others or at the last abscissa.
      double x = static_cast<double>(random() % static_cast<unsigned>(row.abscissae)) - 100;
      if (i % 20 == 0) x = at_once.LastX() + (i % 40 == 0 ? 0 : 1);
      const double y = i;
      const PointChain::Place place = at_once.LowerPlace(x);
      const bool overwrites = !beside && place != at_once.End() && at_once.X(place) == x;
      const bool behind =
          at_once.Empty() || x > at_once.LastX() || (beside && x == at_once.LastX());
      auto outcome = PointChain::Late::NotTaken;
      if (!behind) outcome = late.PlaceLate(next_id, x, y, row.duplicates);
      if (outcome != PointChain::Late::NotTaken) {
        ASSERT_EQ(outcome == PointChain::Late::Overwrote, overwrites) << x;
      } else if (overwrites) {
        late.Set(late.LowerPlace(x), x, y);
      } else if (behind) {
        late.Append(next_id, x, y);
      } else {
        late.Insert(late.LowerPlace(x), {next_id, x, y, 0});
      }
      if (overwrites) {
        at_once.Set(place, x, y);
      } else {
        at_once.Insert(behind ? at_once.End() : place, {next_id++, x, y, 0});
      }
      ASSERT_EQ(late.Size(), at_once.Size());
      ASSERT_EQ(late.LastX(), at_once.LastX());
      if (i % row.look_every == row.look_every - 1) {
        const std::size_t index = random() % late.Size();
        ASSERT_EQ(late.At(index).id, at_once.At(index).id);
      }
    }
    const PointChain copy = late;
    EXPECT_EQ(Ids(copy), Ids(at_once));
    EXPECT_EQ(XValues(copy), XValues(at_once));
    EXPECT_EQ(YValues(copy), YValues(at_once));
    EXPECT_TRUE(copy.SharesAllWith(late));
    if (row.all_wait) {
      EXPECT_LT(copy.ChunkCount(), copy.Size() / PointChunk::kCapacity + 10);
    }
  }
}

TEST(LatePoints, SeveralThreadsMayBeTheFirstToLookAtWaitingPoints) {
  PointChain chain;
  chain.Append(1, 1e10, 0);
  std::mt19937 random(2);
  for (std::int32_t id = 2; id <= 20000; ++id) {
    const auto x = static_cast<double>(random());
    if (chain.PlaceLate(id, x, 1, Duplicates::Allowed) == PointChain::Late::NotTaken) {
      chain.Insert(chain.LowerPlace(x), {id, x, 1, 0});
    }
  }
  double sums[2] = {};
  const auto look = [&chain](double& sum) {
    chain.ForEachPoint([&sum](double, double y) { sum += y; });
  };
  std::thread other(look, std::ref(sums[1]));
  look(sums[0]);
  other.join();
  EXPECT_EQ(sums[0], 19999);
  EXPECT_EQ(sums[1], 19999);
  EXPECT_TRUE(std::ranges::is_sorted(XValues(chain)));
}

}  // namespace
}  // namespace tarnwick
