#include "graph/thinning/arrival_line.h"

#include <algorithm>
#include <cstdint>

#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

std::vector<double> InOrder(const std::vector<double>& values,
                            std::span<const std::uint32_t> order) {
  std::vector<double> sorted(values.size());
  std::ranges::transform(order, sorted.begin(),
                         [&values](std::uint32_t index) { return values[index]; });
  return sorted;
}

ArrivalBox BoxOf(std::span<const double> x, std::span<const double> y) {
  const auto [x_min, x_max] = std::ranges::minmax(x);
  const YExtremes extremes = ExtremesOf(y);
  return {x_min, x_max, extremes.min, extremes.max, !extremes.gaps};
}

ArrivalBox BoxOf(std::span<const ArrivalBox> boxes) {
  ArrivalBox all = boxes.front();
  for (const ArrivalBox& box : boxes.subspan(1)) all.Include(box);
  return all;
}

}  // namespace

void ArrivalBox::Include(const ArrivalBox& other) {
  x_min = std::min(x_min, other.x_min);
  x_max = std::max(x_max, other.x_max);
  y_min = std::min(y_min, other.y_min);
  y_max = std::max(y_max, other.y_max);
  whole = whole && other.whole;
}

ArrivalLine::ArrivalLine(const PointChain& points, const PointGaps& gaps) {
  const std::vector<std::uint32_t> order = ArrivalOrder(points);
  x_ = InOrder(XValues(points), order);
  y_ = InOrder(YValues(points), order);
  breaks_ = BreaksInOrder(points, order, gaps);
  for (std::size_t begin = 0; begin < x_.size(); begin += kSmall) {
    const std::size_t count = std::min(kSmall, x_.size() - begin);
    small_.push_back(
        BoxOf(std::span(x_).subspan(begin, count), std::span(y_).subspan(begin, count)));
  }
  for (const std::size_t at : breaks_) {
    if (at % kSmall != 0) small_[at / kSmall].whole = false;
  }
  constexpr std::size_t kEach = kLarge / kSmall;
  for (std::size_t begin = 0; begin < small_.size(); begin += kEach) {
    large_.push_back(
        BoxOf(std::span(small_).subspan(begin, std::min(kEach, small_.size() - begin))));
  }
  for (const std::size_t at : breaks_) {
    if (at % kLarge != 0) large_[at / kLarge].whole = false;
  }
}

}  // namespace tarnwick
