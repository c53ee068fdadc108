// Arrival orders, breaks and changes of chains, each compared with what its definition says, point by point.
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "data/points/arrival_order.h"
#include "data/points/point_chain.h"
#include "data/points/point_changes.h"
#include "data/points/point_gaps.h"

namespace tarnwick {
namespace {

/// Points with the ids 1 to `count` (each third one left out where `holes`), in an order of X that chance makes.
PointChain RandomChain(int count, std::mt19937& random, bool holes) {
  PointChain chain;
  for (int id = 1; id <= count; ++id) {
    const auto x = static_cast<double>(random() % 1000);
    if (holes && id % 3 == 0) continue;
    chain.Insert(chain.LowerPlace(x), {id, x, x / 7, 0});
  }
  return chain;
}

std::vector<std::int32_t> IdsOf(const PointChain& chain) {
  std::vector<std::int32_t> ids;
  for (std::size_t i = 0; i < chain.Size(); ++i) ids.push_back(chain.At(i).id);
  return ids;
}

TEST(ArrivalOrder, IsThatOfTheIds) {
  std::mt19937 random(3);
  for (const int count : {0, 1, 2, 3, 50, 1000, 5000}) {
    for (const bool holes : {false, true}) {
      const PointChain chain = RandomChain(count, random, holes);
      const std::vector<std::int32_t> ids = IdsOf(chain);
      const std::vector<std::uint32_t> order = ArrivalOrder(chain);
      EXPECT_TRUE(IsOrderOf(order, chain.Size()));
      EXPECT_TRUE(std::ranges::is_sorted(order, {}, [&](std::uint32_t i) { return ids[i]; }));
      EXPECT_EQ(IdsAscend(chain), std::ranges::is_sorted(ids)) << count;
      const PointChain renamed = WithOrder(chain, order);
      ASSERT_EQ(renamed.Size(), chain.Size());
      EXPECT_EQ(ArrivalOrder(renamed), order);
      for (std::size_t i = 0; i < order.size(); ++i) {
        EXPECT_EQ(renamed.At(order[i]).id, static_cast<std::int32_t>(i) + 1);
        EXPECT_EQ(renamed.At(i).x, chain.At(i).x);
        EXPECT_EQ(renamed.At(i).y, chain.At(i).y);
      }
    }
  }
  PointChain appended;
  const std::vector<double> values = {1, 2, 3, 4};
  appended.AppendRun(5, values, values);
  EXPECT_TRUE(IdsAscend(appended));
  appended.AppendRun(4, std::vector<double>{4.0}, std::vector<double>{4.0});
  EXPECT_FALSE(IdsAscend(appended));
  using Order = std::vector<std::uint32_t>;
  EXPECT_TRUE(IsOrderOf(Order{1, 0, 2}, 3));
  EXPECT_FALSE(IsOrderOf(Order{1, 0}, 3));
  EXPECT_FALSE(IsOrderOf(Order{1, 0, 2}, 2));
  EXPECT_FALSE(IsOrderOf(Order{1, 0, 3}, 3));
  EXPECT_FALSE(IsOrderOf(Order{1, 0, 1}, 3));
}

TEST(ArrivalOrder, LinesBreakWherePiecesBegin) {
  std::mt19937 random(5);
  for (int trial = 0; trial < 60; ++trial) {
    const int count = 3 + static_cast<int>(random() % 4000);
    PointChain chain;
    if (trial % 2 == 0) {
      chain = RandomChain(count, random, trial % 4 == 0);
    } else {
      std::vector<double> values(static_cast<std::size_t>(count));
      for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i);
      chain.AppendRun(1, values, values);
      for (int i = 0; i < 5; ++i) chain.Erase(chain.PlaceOf(random() % chain.Size()));
    }
    std::set<std::int32_t> begins;
    for (int i = 0; i < 1 + trial % 7; ++i) {
      begins.insert(2 + static_cast<std::int32_t>(random() % static_cast<unsigned>(count)));
    }
    const PointGaps gaps({begins.begin(), begins.end()}, count - trial % 3);
    // Another piece: a beginning lies above the lower id and not above the higher, and both are of the file.
    const auto parted = [&](std::int32_t one, std::int32_t other) {
      const auto [low, high] = std::minmax(one, other);
      return high <= gaps.Last() && std::ranges::any_of(begins, [&](std::int32_t begin) {
               return begin > low && begin <= high;
             });
    };
    const std::vector<std::int32_t> ids = IdsOf(chain);
    std::vector<std::size_t> along, in_order;
    for (std::size_t i = 1; i < ids.size(); ++i) {
      EXPECT_EQ(gaps.Between(ids[i - 1], ids[i]), parted(ids[i - 1], ids[i]));
      if (parted(ids[i - 1], ids[i])) along.push_back(i);
    }
    EXPECT_EQ(BreaksAlongChain(chain, gaps), along) << trial;
    const std::vector<std::uint32_t> order = ArrivalOrder(chain);
    for (std::size_t i = 1; i < order.size(); ++i) {
      if (parted(ids[order[i - 1]], ids[order[i]])) in_order.push_back(i);
    }
    EXPECT_EQ(BreaksInOrder(chain, order, gaps), in_order) << trial;
  }
  EXPECT_TRUE(BreaksAlongChain(RandomChain(9, random, false), PointGaps()).empty());
}

/// "3 moved, 7 removed" by their ids, in the order told.
std::string Told(const std::vector<PointChange>& changes) {
  std::string text;
  for (const PointChange& change : changes) {
    constexpr const char* kFates[] = {"changed", "moved", "removed", "added"};
    text +=
        std::to_string(change.Id()) + " " + kFates[static_cast<std::size_t>(change.fate)] + ", ";
  }
  return text;
}

TEST(PointChanges, AreThoseOfEveryIdByX) {
  std::mt19937 random(11);
  for (int trial = 0; trial < 40; ++trial) {
    const PointChain was = RandomChain(1 + static_cast<int>(random() % 3000), random, false);
    PointChain now = was;
    std::int32_t next = static_cast<std::int32_t>(was.Size()) + 1;
    for (int edit = 0; edit < trial % 9; ++edit) {
      if (now.Empty()) break;
      const std::size_t index = random() % now.Size();
      const Point point = now.At(index);
      const auto x = static_cast<double>(random() % 1000);
      const unsigned kind = random() % 4;
      if (kind == 0) now.Set(now.PlaceOf(index), point.x, x);
      if (kind == 1 || kind == 2) now.Erase(now.PlaceOf(index));
      if (kind == 1) now.Insert(now.LowerPlace(x), {point.id, x, point.y, 0});
      if (kind == 3) now.Insert(now.LowerPlace(x), {next++, x, x, 0});
    }
    std::map<std::int32_t, Point> before, after;
    for (std::size_t i = 0; i < was.Size(); ++i) before[was.At(i).id] = was.At(i);
    for (std::size_t i = 0; i < now.Size(); ++i) after[now.At(i).id] = now.At(i);
    std::vector<PointChange> expected;
    for (const auto& [id, point] : before) {
      const auto found = after.find(id);
      if (found == after.end()) {
        expected.push_back({PointFate::Removed, point, {}});
      } else if (found->second.x != point.x) {
        expected.push_back({PointFate::Moved, point, found->second});
      } else if (found->second.y != point.y) {
        expected.push_back({PointFate::Changed, point, found->second});
      }
    }
    for (const auto& [id, point] : after) {
      if (!before.contains(id)) expected.push_back({PointFate::Added, {}, point});
    }
    std::ranges::stable_sort(expected, {}, &PointChange::Id);
    std::ranges::stable_sort(expected, {}, &PointChange::X);
    const auto changes = ChangesBetween(was, now, 10000);
    ASSERT_TRUE(changes);
    EXPECT_EQ(Told(*changes), Told(expected));
  }
  PointChain one;
  one.Append(1, 1, 5);
  one.Append(2, 2, 5);
  PointChain other = one;
  EXPECT_EQ(Told(*ChangesBetween(one, other, 0)), "");
  other.Set(other.PlaceOf(0), 1, 6);
  EXPECT_EQ(Told(*ChangesBetween(one, other, 2)), "1 changed, ");
  EXPECT_EQ(ChangesBetween(one, other, 1), std::nullopt);
}

}  // namespace
}  // namespace tarnwick
