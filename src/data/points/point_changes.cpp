#include "data/points/point_changes.h"

#include <algorithm>
#include <bit>
#include <unordered_set>
#include <utility>

namespace tarnwick {
namespace {

using Chunks = std::unordered_set<const PointChunk*>;

Chunks ChunksOf(const PointChain& points) {
  Chunks chunks;
  chunks.reserve(points.ChunkCount());
  points.ForEachChunk([&](const ChunkView& view) { chunks.insert(view.chunk); });
  return chunks;
}

/// The points that lie in none of these chunks, by id; nothing when they are more than `most`.
std::optional<std::vector<Point>> PointsBeside(const PointChain& points, const Chunks& shared,
                                               std::size_t most) {
  std::vector<Point> beside;
  bool too_many = false;
  points.ForEachChunk([&](const ChunkView& view) {
    if (too_many || shared.contains(view.chunk)) return;
    too_many = beside.size() + view.x.size() > most;
    for (std::size_t i = 0; i < view.x.size() && !too_many; ++i)
      beside.push_back(view.chunk->At(i));
  });
  if (too_many) return std::nullopt;
  std::ranges::sort(beside, {}, &Point::id);
  return beside;
}

/// The same number, or both undefined alike.
bool Same(double left, double right) {
  return left == right || std::bit_cast<std::uint64_t>(left) == std::bit_cast<std::uint64_t>(right);
}

}  // namespace

std::optional<std::vector<PointChange>> ChangesBetween(const PointChain& was, const PointChain& now,
                                                       std::size_t most) {
  if (was.SharesAllWith(now)) return std::vector<PointChange>();
  const auto before = PointsBeside(was, ChunksOf(now), most);
  const auto after = PointsBeside(now, ChunksOf(was), most);
  if (!before || !after) return std::nullopt;
  std::vector<PointChange> changes;
  auto old = before->begin();
  auto present = after->begin();
  while (old != before->end() || present != after->end()) {
    if (present == after->end() || (old != before->end() && old->id < present->id)) {
      changes.push_back({PointFate::Removed, *old++, {}});
    } else if (old == before->end() || present->id < old->id) {
      changes.push_back({PointFate::Added, {}, *present++});
    } else {
      if (!Same(old->x, present->x)) {
        changes.push_back({PointFate::Moved, *old, *present});
      } else if (!Same(old->y, present->y)) {
        changes.push_back({PointFate::Changed, *old, *present});
      }
      ++old;
      ++present;
    }
  }
  std::ranges::stable_sort(changes, {}, &PointChange::X);
  return changes;
}

}  // namespace tarnwick
