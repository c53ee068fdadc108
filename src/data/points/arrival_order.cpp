#include "data/points/arrival_order.h"

#include <algorithm>
#include <numeric>

#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

constexpr std::size_t kSlotsPerPoint =
    4;  // up to which a place for every possible id beats sorting

std::int32_t FirstId(const ChunkView& chunk) {
  return chunk.chunk->Id(0);
}
std::int32_t LastId(const ChunkView& chunk) {
  return chunk.chunk->Id(chunk.x.size() - 1);
}

}  // namespace

bool IdsAscend(const PointChain& points) {
  std::int32_t before = 0;
  for (std::size_t number = 0; number < points.ChunkCount(); ++number) {
    const ChunkView chunk = points.Chunk(number);
    if (FirstId(chunk) <= before) return false;
    before = LastId(chunk);
    if (chunk.chunk->IdsAreRun()) continue;
    for (std::size_t i = 1; i < chunk.x.size(); ++i) {
      if (chunk.chunk->Id(i) <= chunk.chunk->Id(i - 1)) return false;
    }
  }
  return true;
}

std::vector<std::uint32_t> ArrivalOrder(const PointChain& points) {
  const std::vector<std::int32_t> ids = Ids(points);
  std::vector<std::uint32_t> order(ids.size());
  if (ids.empty()) return order;
  const auto [low, high] = std::ranges::minmax(ids);
  const auto slots = static_cast<std::size_t>(static_cast<std::int64_t>(high) - low) + 1;
  if (slots / kSlotsPerPoint > ids.size()) {
    std::iota(order.begin(), order.end(), 0U);
    std::ranges::sort(order, {}, [&ids](std::uint32_t index) { return ids[index]; });
    return order;
  }
  constexpr std::uint32_t kNone = ~std::uint32_t{0};
  std::vector<std::uint32_t> by_id(slots, kNone);
  for (std::uint32_t index = 0; index < ids.size(); ++index) {
    by_id[static_cast<std::size_t>(static_cast<std::int64_t>(ids[index]) - low)] = index;
  }
  std::ranges::copy_if(by_id, order.begin(), [](std::uint32_t index) { return index != kNone; });
  return order;
}

bool IsOrderOf(std::span<const std::uint32_t> order, std::size_t points) {
  if (order.size() != points) return false;
  std::vector<bool> seen(points);
  for (const std::uint32_t index : order) {
    if (index >= points || seen[index]) return false;
    seen[index] = true;
  }
  return true;
}

PointChain WithOrder(const PointChain& points, std::span<const std::uint32_t> order) {
  std::vector<std::int32_t> ids(order.size());
  for (std::size_t i = 0; i < order.size(); ++i) ids[order[i]] = static_cast<std::int32_t>(i + 1);
  PointChain renamed;
  std::size_t index = 0;
  points.ForEachPoint([&](double x, double y) { renamed.Append(ids[index++], x, y); });
  return renamed;
}

std::vector<std::size_t> BreaksAlongChain(const PointChain& points, const PointGaps& gaps) {
  std::vector<std::size_t> breaks;
  if (gaps.Empty()) return breaks;
  const std::span<const std::int32_t> begins = gaps.Begins();
  std::int32_t before = 0;
  points.ForEachChunk([&](const ChunkView& chunk) {
    const std::int32_t first = FirstId(chunk), last = std::min(LastId(chunk), gaps.Last());
    if (before != 0 && gaps.Between(before, first)) breaks.push_back(chunk.first_index);
    before = LastId(chunk);
    if (!chunk.chunk->IdsAreRun()) {
      for (std::size_t i = 1; i < chunk.x.size(); ++i) {
        if (gaps.Between(chunk.chunk->Id(i - 1), chunk.chunk->Id(i)))
          breaks.push_back(chunk.first_index + i);
      }
      return;
    }
    for (auto at = std::ranges::upper_bound(begins, first); at != begins.end() && *at <= last;
         ++at) {
      breaks.push_back(chunk.first_index + static_cast<std::size_t>(*at - first));
    }
  });
  return breaks;
}

std::vector<std::size_t> BreaksInOrder(const PointChain& points,
                                       std::span<const std::uint32_t> order,
                                       const PointGaps& gaps) {
  std::vector<std::size_t> breaks;
  if (gaps.Empty()) return breaks;
  const std::vector<std::int32_t> ids = Ids(points);
  const auto id_of = [&ids](std::uint32_t index) { return ids[index]; };
  for (const std::int32_t begin : gaps.Begins()) {
    const auto at = std::ranges::lower_bound(order, begin, {}, id_of);
    if (at == order.begin() || at == order.end() || id_of(*at) > gaps.Last()) continue;
    const auto place = static_cast<std::size_t>(at - order.begin());
    if (breaks.empty() || breaks.back() != place) breaks.push_back(place);
  }
  return breaks;
}

}  // namespace tarnwick
