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

bool LineCover::Holds(PixelPoint from, PixelPoint to) const {
  const int left = std::max(static_cast<int>(std::floor(from.x)), area_.left());
  const int right = std::min(static_cast<int>(std::floor(to.x)), area_.right());
  const int top = std::max(static_cast<int>(std::floor(from.y)), area_.top());
  const int bottom = std::min(static_cast<int>(std::floor(to.y)), area_.bottom());
  if (left > right || top > bottom) return true;
  const auto first = static_cast<std::size_t>(top - area_.top());
  const auto last = static_cast<std::size_t>(bottom - area_.top());
  for (int column = left; column <= right; ++column) {
    const std::size_t base = static_cast<std::size_t>(column - area_.left()) * stride_;
    if (!bits_.AllSet(base + first, base + last)) return false;
  }
  return true;
}

// Column by column, from where the segment enters it to where it leaves it; in the area's own pixels.
void LineCover::Join(PixelPoint from, PixelPoint to) {
  if (from.x > to.x) std::swap(from, to);
  from = {from.x - area_.left(), from.y - area_.top()};
  to = {to.x - area_.left(), to.y - area_.top()};
  if (!(to.x >= 0 && from.x < area_.width())) return;
  const int first = static_cast<int>(std::max(from.x, 0.0));
  const int last = static_cast<int>(std::min(to.x, area_.width() - 1.0));
  const double slope = to.x > from.x ? (to.y - from.y) / (to.x - from.x) : 0;
  double entered = from.x < 0 ? from.y - from.x * slope : from.y;
  for (int column = first; column < last; ++column) {
    const double left = from.y + (column + 1 - from.x) * slope;
    Mark(column, entered, left);
    entered = left;
  }
  Mark(last, entered, to.x < last + 1 ? to.y : from.y + (last + 1 - from.x) * slope);
}

void LineCover::Mark(int column, double y, double other_y) {
  MarkRows(column, std::min(y, other_y), std::max(y, other_y));
}

void LineCover::MarkRows(int column, double low, double high) {
  if (!(high >= 0 && low < area_.height())) return;
  const auto top = static_cast<std::size_t>(std::max(low, 0.0));
  const auto bottom = static_cast<std::size_t>(std::min(high, area_.height() - 1.0));
  const std::size_t base = static_cast<std::size_t>(column) * stride_;
  bits_.SetRange(base + top, base + bottom);
}

LineCover LineCover::Within(const QRect& area, const CellPlaces& places) const {
  LineCover seen(area);
  const double left = places.first.x - area.left(), top = places.first.y - area.top();
  bits_.ForEachRun([&](std::size_t begin, std::size_t end) {
    const std::size_t column = begin / stride_;
    const std::size_t base = column * stride_;
    const double x = left + places.column_step * static_cast<double>(column);
    if (!(x >= 0 && x < area.width())) return;
    seen.MarkRows(static_cast<int>(x), top + places.row_step * static_cast<double>(begin - base),
                  top + places.row_step * static_cast<double>(end - 1 - base));
  });
  return seen;
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
