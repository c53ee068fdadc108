#include "desk/document/filed_points.h"

#include <algorithm>
#include <iterator>
#include <system_error>
#include <utility>

namespace tarnwick {
namespace {

bool IsThere(const std::filesystem::path& file) {
  std::error_code ignored;  // what cannot be looked at holds nothing for anybody
  return std::filesystem::exists(file, ignored);
}

/// Computed values beside X and Y do not count.
bool SamePoints(const PointChain& left, const PointChain& right) {
  if (left.SharesAllWith(right)) return true;
  if (left.Size() != right.Size() || left.ChunkCount() != right.ChunkCount()) return false;
  for (std::size_t i = 0; i < left.ChunkCount(); ++i) {
    const ChunkView one = left.Chunk(i);
    const ChunkView other = right.Chunk(i);
    if (!std::ranges::equal(one.x, other.x) || !std::ranges::equal(one.y, other.y)) return false;
  }
  return true;
}

}  // namespace

std::vector<PointsOfFile> PointsOfGraph(const GraphState& state,
                                        const std::filesystem::path& file) {
  std::vector<PointsOfFile> all;
  for (const SeriesState& series : state.series)
    all.push_back({.file = file, .points = series.data.points});
  for (const auto& child : state.children)
    std::ranges::move(PointsOfGraph(*child, file), std::back_inserter(all));
  return all;
}

void FiledPoints::Add(std::vector<PointsOfFile> read, const GraphState& state) {
  const std::vector<PointsOfFile> present = PointsOfGraph(state, {});
  std::erase_if(known_, [&](const PointsOfFile& known) {
    return std::ranges::none_of(
        present, [&](const PointsOfFile& one) { return SamePoints(one.points, known.points); });
  });
  std::ranges::move(read, std::back_inserter(known_));
}

void FiledPoints::Rewritten(const std::filesystem::path& file, std::vector<PointsOfFile> kept) {
  std::erase_if(known_, [&](const PointsOfFile& known) { return known.file == file; });
  std::ranges::move(kept, std::back_inserter(known_));
}

bool FiledPoints::HoldAll(const GraphState& state) const {
  return std::ranges::all_of(PointsOfGraph(state, {}),
                             [this](const PointsOfFile& one) { return Hold(one.points); });
}

bool FiledPoints::Hold(const PointChain& points) const {
  return points.Empty() || std::ranges::any_of(known_, [&](const PointsOfFile& known) {
           return SamePoints(known.points, points) && IsThere(known.file);
         });
}

}  // namespace tarnwick
