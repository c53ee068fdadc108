#include "graph/thinning/arrival_cover.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>

namespace tarnwick {
namespace {

/// Vertices beyond which a line is drawn as an area, in all and in a column of the picture.
constexpr std::size_t kCrowd = 20'000;
constexpr std::size_t kCrowdedColumn = 8;

/// Pixel columns that a box has a part in.
double ColumnsOf(const ArrivalBox& box, const ThinningView& view) {
  return std::floor(view.x.At(box.x_max)) - std::floor(view.x.At(box.x_min)) + 1;
}

/// About the vertices that the line has where it leaves the column it is in.
std::size_t VerticesAcross(const ArrivalLine& line, const ThinningView& view) {
  constexpr double kVerticesOfColumn = 2;
  constexpr std::size_t kEach = ArrivalLine::kLarge / ArrivalLine::kSmall;
  const std::span<const ArrivalBox> boxes = line.SmallBoxes();
  double vertices = 0;
  for (std::size_t large = 0; large < line.LargeBoxes().size(); ++large) {
    if (ColumnsOf(line.LargeBoxes()[large], view) <= kVerticesOfColumn) continue;
    const std::size_t begin = large * kEach;
    for (const ArrivalBox& box : boxes.subspan(begin, std::min(kEach, boxes.size() - begin))) {
      const double columns = ColumnsOf(box, view);
      if (columns > 1)
        vertices += std::min<double>(kVerticesOfColumn * columns, ArrivalLine::kSmall);
    }
  }
  return static_cast<std::size_t>(vertices);
}

class CoverWalk {
 public:
  CoverWalk(const ArrivalLine& line, const ThinningView& view, const QRect& area)
      : line_(line), view_(view), cover_(area), x_(line.X()), y_(line.Y()) {}

  LineCover Run() {
    // A part of the points, spread over the whole line, covers most of the boxes of all others.
    for (std::size_t pass = 0; pass < kPasses; ++pass) {
      passed_ = 0;
      for (std::size_t box = pass; box < line_.SmallBoxes().size(); box += kPasses) TakeBox(box);
    }
    return std::move(cover_);
  }

 private:
  static constexpr std::size_t kPasses = 8;

  void TakeBox(std::size_t number) {
    const std::size_t begin = number * ArrivalLine::kSmall;
    const std::size_t behind = begin + ArrivalLine::kSmall;
    if (IsCovered(line_.SmallBoxes()[number], behind)) return;
    AddPoints(begin, std::min(behind, x_.size()));
  }

  bool HasPlace(double x, double y) const {
    return y == y && (!view_.y.Log() || y > 0) && (!view_.x.Log() || x > 0);
  }
  double Drawn(std::size_t at) const {
    return y_[at] - view_.zero_value -
           (view_.base_line_slope == 0 ? 0 : view_.base_line_slope * x_[at]);
  }
  PixelPoint Place(std::size_t at) const { return {view_.x.At(x_[at]), view_.y.At(Drawn(at))}; }

  /// Whether nothing of the line from the box's first point to `next`, the first behind it, is left to be marked.
  bool IsCovered(const ArrivalBox& box, std::size_t next) const {
    if (!box.whole || view_.base_line_slope != 0) return false;
    const double low = box.y_min - view_.zero_value, high = box.y_max - view_.zero_value;
    if (!HasPlace(box.x_min, low)) return false;
    PixelPoint from{view_.x.At(box.x_min), view_.y.At(low)};
    PixelPoint to{view_.x.At(box.x_max), view_.y.At(high)};
    if (from.y > to.y) std::swap(from.y, to.y);
    if (next < x_.size() && HasPlace(x_[next], Drawn(next))) {
      const PixelPoint behind = Place(next);
      from = {std::min(from.x, behind.x), std::min(from.y, behind.y)};
      to = {std::max(to.x, behind.x), std::max(to.y, behind.y)};
    }
    return cover_.Holds(from, to);
  }

  bool IsBrokenBefore(std::size_t at) {
    const std::span<const std::size_t> breaks = line_.Breaks();
    while (passed_ < breaks.size() && breaks[passed_] < at) ++passed_;
    return passed_ < breaks.size() && breaks[passed_] == at;
  }

  /// Each point with the way from it to the next.
  void AddPoints(std::size_t begin, std::size_t end) {
    PixelPoint here = Place(begin);
    bool placed = HasPlace(x_[begin], Drawn(begin));
    for (std::size_t at = begin; at < end; ++at) {
      const std::size_t next = at + 1;
      const bool last = next == x_.size();
      const PixelPoint there = last ? here : Place(next);
      const bool there_placed = !last && HasPlace(x_[next], Drawn(next));
      const bool joined = there_placed && !IsBrokenBefore(next);
      if (placed) cover_.Join(here, joined ? there : here);
      here = there;
      placed = there_placed;
    }
  }

  const ArrivalLine& line_;
  const ThinningView& view_;
  LineCover cover_;
  std::span<const double> x_, y_;
  std::size_t passed_ = 0;  // breaks
};

}  // namespace

bool IsTangle(const ArrivalLine& line, const ThinningView& view, const QRect& area) {
  if (area.isEmpty() || !view.x.Usable() || !view.y.Usable()) return false;
  const auto columns = static_cast<std::size_t>(area.width());
  return VerticesAcross(line, view) > std::max(kCrowd, kCrowdedColumn * columns);
}

LineCover CoverOf(const ArrivalLine& line, const ThinningView& view, const QRect& area) {
  return CoverWalk(line, view, area).Run();
}

}  // namespace tarnwick
