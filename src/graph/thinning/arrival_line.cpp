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

/// Boxes of so many boxes each.
std::vector<ArrivalBox> Merged(std::span<const ArrivalBox> boxes, std::size_t each) {
  std::vector<ArrivalBox> merged;
  for (std::size_t begin = 0; begin < boxes.size(); begin += each) {
    merged.push_back(BoxOf(boxes.subspan(begin, std::min(each, boxes.size() - begin))));
  }
  return merged;
}

/// Boxes of so many points each are not whole where the line is broken inside.
void OpenAt(std::span<const std::size_t> breaks, std::size_t points,
            std::vector<ArrivalBox>& boxes) {
  for (const std::size_t at : breaks) {
    if (at % points != 0) boxes[at / points].whole = false;
  }
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
  OpenAt(breaks_, kSmall, small_);
  middle_ = Merged(small_, kMiddle / kSmall);
  OpenAt(breaks_, kMiddle, middle_);
  large_ = Merged(middle_, kLarge / kMiddle);
  OpenAt(breaks_, kLarge, large_);
}

}  // namespace tarnwick
