#include "data/points/line_way.h"

#include <algorithm>

#include "data/points/point_columns.h"
#include "data/points/turns.h"

namespace tarnwick {
namespace {

std::vector<LinePiece> CutBefore(const std::vector<std::size_t>& places, std::size_t points) {
  std::vector<LinePiece> pieces;
  std::size_t begin = 0;
  for (const std::size_t place : places) {
    pieces.push_back({begin, place});
    begin = place;
  }
  if (points > begin) pieces.push_back({begin, points});
  return pieces;
}

}  // namespace

std::vector<Point> PointsAlong(const PointChain& points, const LineWay& way) {
  std::vector<Point> by_x;
  by_x.reserve(points.Size());
  points.ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i)
      by_x.push_back({view.chunk->Id(i), view.x[i], view.y[i]});
  });
  if (way.order.empty()) return by_x;
  std::vector<Point> along;
  along.reserve(by_x.size());
  for (const std::uint32_t index : way.order) along.push_back(by_x[index]);
  return along;
}

std::vector<double> XAlong(const PointChain& points, const LineWay& way) {
  std::vector<double> by_x = XValues(points);
  if (way.order.empty()) return by_x;
  std::vector<double> along;
  along.reserve(by_x.size());
  for (const std::uint32_t index : way.order) along.push_back(by_x[index]);
  return along;
}

std::vector<LinePiece> PiecesOf(const LineWay& way, std::size_t points) {
  return CutBefore(way.breaks, points);
}

std::vector<LinePiece> BranchesOf(const LineWay& way, const PointChain& points) {
  if (way.order.empty()) return PiecesOf(way, points.Size());
  std::vector<std::size_t> places =
      TurnsOf(XAlong(points, way), way.breaks, JitterOf(XValues(points)));
  places.insert(places.end(), way.breaks.begin(), way.breaks.end());
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return CutBefore(places, points.Size());
}

}  // namespace tarnwick
