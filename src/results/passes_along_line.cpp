#include "results/passes_along_line.h"

#include <cstddef>
#include <functional>

namespace tarnwick {
namespace {

/// Where `above`, told of each point along the line, is zero or changes its sign within a piece.
std::vector<Between> SignChanges(const PointChain& points, const LineWay& way, std::size_t most,
                                 const std::function<double(const Point&)>& above) {
  const std::vector<Point> line = PointsAlong(points, way);
  std::vector<Between> found;
  for (const LinePiece piece : PiecesOf(way, line.size())) {
    for (std::size_t i = piece.begin; i < piece.end && found.size() < most; ++i) {
      const double now = above(line[i]);
      const double last = i > piece.begin ? above(line[i - 1]) : 0;
      if (now == 0) {
        found.push_back({line[i], line[i], 0});
      } else if (last * now < 0) {
        found.push_back({line[i - 1], line[i], last / (last - now)});
      }
    }
  }
  return found;
}

}  // namespace

std::vector<Between> PassesOfX(const PointChain& points, const LineWay& way, double x,
                               std::size_t most) {
  return SignChanges(points, way, most, [x](const Point& point) { return point.x - x; });
}

std::vector<double> PassesOfY(const PointChain& points, const LineWay& way, const Level& level,
                              std::size_t most) {
  const auto above = [&level](const Point& point) {
    return point.y - level.offset - level.slope * point.x - level.y;
  };
  std::vector<double> found;
  for (const Between& pass : SignChanges(points, way, most, above)) {
    found.push_back(pass.left.x + pass.share * (pass.right.x - pass.left.x));
  }
  return found;
}

}  // namespace tarnwick
