#include "graph/thinning/symbol_cells.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "graph/thinning/value_scan.h"

namespace tarnwick {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kCrowd = 64;  // points a column

// The rows taken in one pixel column, cleared for the next: points come in order of X. Rows rise or fall with the value, so
// that every value between those at the ends of a run of taken rows falls into the run.
class ColumnRows {
 public:
  ColumnRows(int rows, int gap)
      : gap_(static_cast<std::size_t>(gap)), rows_(static_cast<std::size_t>(rows) + 2 * gap_) {}

  void Begin() {
    settled_low_ = kInfinity;
    settled_high_ = -kInfinity;
    settled_rows_ = 0;
    if (++mark_ != 0) return;
    rows_.assign(rows_.size(), {});
    mark_ = 1;
  }

  /// Values of the longest run: nothing more is seen of them. NaN is none of them.
  bool Settled(double value) const { return value >= settled_low_ && value <= settled_high_; }

  bool Take(int row, double value) {
    const std::size_t place = static_cast<std::size_t>(row) + gap_;
    if (rows_[place].mark == mark_) return false;
    rows_[place] = {value, place, mark_};
    std::size_t first = place, last = place;
    for (std::size_t step = 1; step <= gap_; ++step) {
      if (first == place && Taken(place - step)) first = Join(place - step, place);
      if (last == place && Taken(place + step)) last = Join(place + step, place);
    }
    rows_[first].other_end = last;
    rows_[last].other_end = first;
    if (last - first + 1 > settled_rows_) {
      settled_rows_ = last - first + 1;
      settled_low_ = std::min(rows_[first].value, rows_[last].value);
      settled_high_ = std::max(rows_[first].value, rows_[last].value);
    }
    return true;
  }

 private:
  struct Row {
    double value = 0;
    std::size_t other_end = 0;  // of the run, when this row is an end of one
    std::uint32_t mark = 0;     // of the column it was taken in
  };

  bool Taken(std::size_t place) const { return rows_[place].mark == mark_; }
  // The far end of the run that ends at `end`; the rows up to `place` are hidden from now on.
  std::size_t Join(std::size_t end, std::size_t place) {
    for (std::size_t row = std::min(end, place) + 1; row < std::max(end, place); ++row) {
      rows_[row].mark = mark_;
    }
    return rows_[end].other_end;
  }

  std::size_t gap_;
  std::vector<Row> rows_;  // with `gap_` more at either end
  std::uint32_t mark_ = 0;
  std::size_t settled_rows_ = 0;
  double settled_low_ = kInfinity, settled_high_ = -kInfinity;
};

class SymbolWalk {
 public:
  SymbolWalk(const PointChain& points, const ThinningView& view, const QRect& area, int gap)
      : points_(points),
        view_(view),
        area_(area),
        values_(view),
        by_blocks_(view.ordinate == Ordinate::Y && view.base_line_slope == 0),
        rows_(area.height(), gap),
        column_(area.left() - 1) {}

  std::vector<QPoint> Run(std::size_t index) {
    while (index < points_.Size()) {
      const std::size_t number = points_.ChunkOfIndex(index);
      const ChunkView chunk = points_.Chunk(number);
      if (!TakeChunk(chunk, number, index - chunk.first_index)) break;
      index = chunk.first_index + chunk.x.size();
    }
    return std::move(pixels_);
  }

 private:
  // False when the chunk reaches beyond the area.
  bool TakeChunk(const ChunkView& chunk, std::size_t number, std::size_t begin) {
    while (begin < chunk.x.size()) {
      const double x = view_.x.At(chunk.x[begin]);
      if (x >= area_.right() + 1) return false;
      if (!(x >= area_.left())) {  // the border's point by rounding, or one without a place
        ++begin;
        continue;
      }
      const int here = static_cast<int>(std::floor(x));
      if (here != column_) {
        column_ = here;
        rows_.Begin();
      }
      const double border = view_.x.ValueAt(here + 1);
      const std::size_t end = FirstNotBelow(chunk, number, begin + 1, border);
      const bool whole = begin == 0 && end == chunk.x.size() && by_blocks_;
      if (!whole || !Unseen(points_.ChunkExtremes(number))) TakeRun(chunk, begin, end);
      begin = end;
    }
    return true;
  }

  std::size_t FirstNotBelow(const ChunkView& chunk, std::size_t number, std::size_t begin,
                            double border) const {
    const std::size_t size = chunk.x.size();
    if (begin == size || !(chunk.x[begin] < border)) return begin;
    const std::size_t next = number + 1;
    if (next < points_.ChunkCount() && points_.ChunkFirstX(next) < border) return size;
    const auto first = chunk.x.begin();
    const auto found =
        std::lower_bound(first + static_cast<std::ptrdiff_t>(begin), chunk.x.end(), border);
    return static_cast<std::size_t>(found - first);
  }

  // Nothing of these stored Y would be seen. NaN never is.
  bool Unseen(const YExtremes& stored) const {
    const double low = stored.min - view_.zero_value, high = stored.max - view_.zero_value;
    return (rows_.Settled(low) && rows_.Settled(high)) || low >= too_high_ || high <= too_low_;
  }

  void TakeRun(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    constexpr std::size_t kBlock = PointChunk::kBlock;
    const std::size_t first = (begin + kBlock - 1) / kBlock, last = end / kBlock;
    const PointChunk::Blocks kept =
        by_blocks_ && first < last ? chunk.chunk->KeptBlocks() : PointChunk::Blocks{};
    if (kept.lows.empty()) {
      TakePoints(chunk, begin, end);
      return;
    }
    TakePoints(chunk, begin, first * kBlock);
    for (std::size_t block = first; block < last; ++block) {
      if (!Unseen({kept.lows[block], kept.highs[block], false})) {
        TakePoints(chunk, block * kBlock, (block + 1) * kBlock);
      }
    }
    TakePoints(chunk, last * kBlock, end);
  }

  void TakePoints(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      const double value = values_.At(chunk, i);
      if (!rows_.Settled(value)) TakePoint(value);
    }
  }

  void TakePoint(double value) {
    const double y = view_.y.At(value);
    if (y >= area_.top() && y < area_.bottom() + 1) {
      const int row = static_cast<int>(y - area_.top());
      if (rows_.Take(row, value)) pixels_.emplace_back(column_, row + area_.top());
    } else if (y == y) {
      if ((y < area_.top()) == view_.y.Rising()) {
        too_low_ = std::max(too_low_, value);
      } else {
        too_high_ = std::min(too_high_, value);
      }
    }
  }

  const PointChain& points_;
  const ThinningView& view_;
  const QRect area_;
  ValueScan values_;
  bool by_blocks_;  // the extremes of stored Y tell those of what is drawn
  ColumnRows rows_;
  int column_;
  double too_low_ = -kInfinity, too_high_ = kInfinity;  // beyond the area from here on
  std::vector<QPoint> pixels_;
};

}  // namespace

std::vector<QPoint> OccupiedPixels(const PointChain& points, const ThinningView& view,
                                   const QRect& area, SymbolHiding hiding) {
  if (points.Empty() || area.isEmpty() || !view.x.Usable() || !view.y.Usable() ||
      !view.x.Rising()) {
    return {};
  }
  const std::size_t begin = points.LowerBound(view.x.ValueAt(area.left()));
  const std::size_t end = points.UpperBound(view.x.ValueAt(area.right() + 1));
  const bool crowd = static_cast<double>(end - std::min(begin, end)) > kCrowd * area.width();
  return SymbolWalk(points, view, area, crowd ? std::max(hiding.rows, 1) : 1).Run(begin);
}

}  // namespace tarnwick
