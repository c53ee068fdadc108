#include "data/points/point_columns.h"

#include <algorithm>

namespace tarnwick {

namespace {

std::vector<double> Column(const PointChain& points, std::span<const double> ChunkView::*column) {
  std::vector<double> values;
  values.reserve(points.Size());
  points.ForEachChunk([&](const ChunkView& chunk) {
    values.insert(values.end(), (chunk.*column).begin(), (chunk.*column).end());
  });
  return values;
}

}  // namespace

std::vector<double> XValues(const PointChain& points) {
  return Column(points, &ChunkView::x);
}

std::vector<double> YValues(const PointChain& points) {
  return Column(points, &ChunkView::y);
}

std::vector<std::int32_t> Ids(const PointChain& points) {
  std::vector<std::int32_t> ids;
  ids.reserve(points.Size());
  points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) ids.push_back(view.chunk->Id(i));
  });
  return ids;
}

std::optional<std::size_t> IndexOfId(const PointChain& points, std::int32_t id) {
  if (points.Empty() || id <= 0) return std::nullopt;
  // Where points were only appended, and some deleted, the point stands at id - 1 or somewhat before.
  const std::size_t guess = std::min(static_cast<std::size_t>(id) - 1, points.Size() - 1);
  const std::size_t home = points.ChunkOfIndex(guess);
  const auto index_in = [&](std::size_t number) -> std::optional<std::size_t> {
    const ChunkView view = points.Chunk(number);
    const std::size_t offset = view.chunk->OffsetOfId(id);
    if (offset == view.x.size()) return std::nullopt;
    return view.first_index + offset;
  };
  for (std::size_t number = home + 1; number-- > 0;) {
    if (const auto index = index_in(number)) return index;
  }
  for (std::size_t number = home + 1; number < points.ChunkCount(); ++number) {
    if (const auto index = index_in(number)) return index;
  }
  return std::nullopt;
}

}  // namespace tarnwick
