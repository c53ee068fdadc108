#include "graph/thinning/line_cover.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {

LineCover::LineCover(const QRect& area)
    : area_(area),
      stride_((static_cast<std::size_t>(std::max(0, area.height())) / RowBits::kWord + 1) *
              RowBits::kWord),
      bits_(static_cast<std::size_t>(std::max(0, area.width())) * stride_) {}

void LineCover::Add(std::span<const PixelPoint> line) {
  if (area_.isEmpty()) return;
  if (line.size() == 1) Join(line[0], line[0]);
  for (std::size_t i = 1; i < line.size(); ++i) Join(line[i - 1], line[i]);
}

// Column by column, from where the segment enters it to where it leaves it.
void LineCover::Join(PixelPoint from, PixelPoint to) {
  if (from.x > to.x) std::swap(from, to);
  const double first = std::max(std::floor(from.x), static_cast<double>(area_.left()));
  const double last = std::min(std::floor(to.x), static_cast<double>(area_.right()));
  if (!(first <= last)) return;
  const double slope = to.x > from.x ? (to.y - from.y) / (to.x - from.x) : 0;
  const auto y_at = [&](double x) {
    return x <= from.x ? from.y : x >= to.x ? to.y : from.y + (x - from.x) * slope;
  };
  double entered = y_at(first);
  for (int column = static_cast<int>(first); column <= static_cast<int>(last); ++column) {
    const double left = y_at(column + 1);
    Mark(column, entered, left);
    entered = left;
  }
}

void LineCover::Mark(int column, double y, double other_y) {
  const auto [low, high] = std::minmax(y, other_y);
  const double top = std::max(std::floor(low), static_cast<double>(area_.top()));
  const double bottom = std::min(std::floor(high), static_cast<double>(area_.bottom()));
  if (!(top <= bottom)) return;
  const std::size_t base = static_cast<std::size_t>(column - area_.left()) * stride_;
  bits_.SetRange(base + static_cast<std::size_t>(top - area_.top()),
                 base + static_cast<std::size_t>(bottom - area_.top()));
}

std::vector<QRect> LineCover::Runs() const {
  std::vector<QRect> runs;
  std::size_t end = 0;
  bits_.ForEach([&](std::size_t bit) {
    if (bit < end) return;
    end = bits_.UnsetBehind(bit);
    runs.emplace_back(area_.left() + static_cast<int>(bit / stride_),
                      area_.top() + static_cast<int>(bit % stride_), 1,
                      static_cast<int>(end - bit));
  });
  return runs;
}

}  // namespace tarnwick
