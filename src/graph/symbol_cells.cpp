#include "graph/symbol_cells.h"

#include <cmath>
#include <cstdint>

#include "graph/value_scan.h"

namespace tarnwick {

namespace {

// The pixels already taken in one pixel column, cleared for the next: points come in order of X.
class ColumnPixels {
 public:
  explicit ColumnPixels(int rows) : taken_(static_cast<std::size_t>(rows), 0) {}

  void Begin() {
    if (++mark_ != 0) return;
    taken_.assign(taken_.size(), 0);
    mark_ = 1;
  }
  bool Take(int row) {
    std::uint32_t& cell = taken_[static_cast<std::size_t>(row)];
    if (cell == mark_) return false;
    cell = mark_;
    return true;
  }

 private:
  std::vector<std::uint32_t> taken_;
  std::uint32_t mark_ = 0;
};

}  // namespace

std::vector<QPoint> OccupiedPixels(const PointChain& points, const ThinningView& view,
                                   const QRect& area) {
  std::vector<QPoint> pixels;
  if (points.Empty() || area.isEmpty() || !view.x.Usable() || !view.y.Usable() ||
      !view.x.Rising()) {
    return pixels;
  }
  const ValueScan values(view);
  ColumnPixels column_pixels(area.height());
  const double bottom = area.bottom() + 1;
  int column = area.left() - 1;
  std::size_t index = points.LowerBound(view.x.ValueAt(area.left()));
  while (index < points.Size()) {
    const ChunkView chunk = points.Chunk(points.ChunkOfIndex(index));
    std::size_t i = index - chunk.first_index;
    while (i < chunk.x.size()) {
      const double x = view.x.At(chunk.x[i]);
      if (x >= area.right() + 1) return pixels;
      if (!(x >= area.left())) {  // the border's point by rounding, or one without a place
        ++i;
        continue;
      }
      const int here = static_cast<int>(std::floor(x));
      if (here != column) {
        column = here;
        column_pixels.Begin();
      }
      const double border = view.x.ValueAt(here + 1);
      do {
        const double y = view.y.At(values.At(chunk, i));
        if (!(y >= area.top() && y < bottom)) continue;
        const int row = static_cast<int>(y - area.top());
        if (column_pixels.Take(row)) pixels.emplace_back(here, row + area.top());
      } while (++i < chunk.x.size() && chunk.x[i] < border);
    }
    index = chunk.first_index + chunk.x.size();
  }
  return pixels;
}

}  // namespace tarnwick
