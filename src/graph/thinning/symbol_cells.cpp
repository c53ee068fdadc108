#include "graph/thinning/symbol_cells.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <utility>

#include "graph/thinning/column_rows.h"
#include "graph/thinning/symbol_crowd.h"
#include "graph/thinning/value_scan.h"

namespace tarnwick {

namespace {

constexpr double kCrowd = 64;            // points a column
constexpr std::size_t kChunksAhead = 3;  // whose extremes are asked for before they are read
constexpr std::size_t kBlock = PointChunk::kBlock;

// Points of one pixel column that lie between two taken rows and may show.
struct Block {
  const double* y;
  std::int32_t first_row, last_row;
};

class SymbolWalk {
 public:
  SymbolWalk(const PointChain& points, const ThinningView& view, const QRect& area,
             SymbolHiding hiding)
      : points_(points),
        view_(view),
        area_(area),
        values_(view),
        by_blocks_(view.ordinate == Ordinate::Y && view.base_line_slope == 0),
        map_(view.y, area.top(), area.height()),
        rows_(area.height(), hiding.gap),
        column_(area.left() - 1) {
    if (hiding.gap > 1) crowd_.emplace(area.width(), rows_, hiding);
  }

  SymbolPixels Run(std::size_t index) {
    while (index < points_.Size()) {
      const std::size_t number = points_.ChunkOfIndex(index);
      const ChunkView chunk = points_.Chunk(number);
      if (by_blocks_ && number + kChunksAhead < points_.ChunkCount()) {
        points_.ChunkToCome(number + kChunksAhead)
            .PrefetchExtremes(chunk.chunk->Room(), chunk.chunk->HasIdRoom());
      }
      if (!TakeChunk(chunk, number, index - chunk.first_index)) break;
      index = chunk.first_index + chunk.x.size();
    }
    EndColumn();
    if (crowd_) pixels_ = crowd_->TakeShown();
    const QPoint corner = area_.topLeft() - QPoint(0, 1);
    for (QPoint& pixel : pixels_.symbols) pixel += corner;
    for (QRect& run : pixels_.solid) run.translate(corner);
    return std::move(pixels_);
  }

 private:
  // False when the chunk reaches beyond the area.
  bool TakeChunk(const ChunkView& chunk, std::size_t number, std::size_t begin) {
    while (begin < chunk.x.size()) {
      const double x = view_.x.At(begin == 0 ? points_.ChunkFirstX(number) : chunk.x[begin]);
      if (x >= area_.right() + 1) return false;
      if (!(x >= area_.left())) {  // the border's point by rounding, or one without a place
        ++begin;
        continue;
      }
      const int here = static_cast<int>(std::floor(x));
      if (here != column_) {
        EndColumn();
        column_ = here;
      }
      const double border = view_.x.ValueAt(here + 1);
      const std::size_t end = FirstNotBelow(chunk, number, begin + 1, border);
      const bool whole = begin == 0 && end == chunk.x.size() && by_blocks_;
      if (!whole || !TakeExtremes(points_.ChunkExtremes(number))) TakeRun(chunk, begin, end);
      begin = end;
    }
    return true;
  }

  std::size_t FirstNotBelow(const ChunkView& chunk, std::size_t number, std::size_t begin,
                            double border) const {
    const std::size_t size = chunk.x.size(), next = number + 1;
    if (next < points_.ChunkCount() && points_.ChunkFirstX(next) < border) return size;
    if (begin == size || !(chunk.x[begin] < border)) return begin;
    const auto first = chunk.x.begin();
    const auto found =
        std::lower_bound(first + static_cast<std::ptrdiff_t>(begin), chunk.x.end(), border);
    return static_cast<std::size_t>(found - first);
  }

  void EndColumn() {
    if (column_ < area_.left()) return;
    rows_.Close();
    if (!blocks_.empty()) ReadBlocks();
    const int column = column_ - area_.left();
    if (crowd_) {
      crowd_->Add(column, rows_);
    } else {
      rows_.Taken().ForEach(
          [&](std::size_t row) { pixels_.symbols.emplace_back(column, static_cast<int>(row)); });
    }
    rows_.Clear();
    blocks_.clear();
  }

  bool TakeExtremes(const YExtremes& stored) {
    if (!values_.HasPlace(stored.min - view_.zero_value)) return false;
    const auto [first, last] = std::minmax(
        {map_.At(stored.min - view_.zero_value), map_.At(stored.max - view_.zero_value)});
    rows_.Take(first);
    rows_.Take(last);
    return rows_.Hidden(first, last);
  }

  void TakeRun(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    const std::size_t first = (begin + kBlock - 1) / kBlock, last = end / kBlock;
    const PointChunk::Blocks kept =
        by_blocks_ && first < last ? chunk.chunk->KeptBlocks() : PointChunk::Blocks{};
    if (kept.lows.empty()) {
      TakePoints(chunk, begin, end);
      return;
    }
    TakePoints(chunk, begin, first * kBlock);
    TakeBlocks(chunk, kept, first, last);
    TakePoints(chunk, last * kBlock, end);
    rows_.Close();
  }

  // The extremes of blocks; what may show besides is left for the column's end.
  void TakeBlocks(const ChunkView& chunk, const PointChunk::Blocks& kept, std::size_t first,
                  std::size_t last) {
    constexpr std::size_t kMost = PointChunk::kCapacity / kBlock;
    std::int32_t lows[kMost], highs[kMost];
    map_.All(kept.lows.data() + first, view_.zero_value, last - first, lows);
    map_.All(kept.highs.data() + first, view_.zero_value, last - first, highs);
    for (std::size_t block = first; block < last; ++block) {
      const double* const y = chunk.y.data() + block * kBlock;
      const auto [top, bottom] = std::minmax(lows[block - first], highs[block - first]);
      if (!values_.HasPlace(kept.lows[block] - view_.zero_value)) {
        TakeStored(y, kBlock);
        continue;
      }
      rows_.Take(top);
      rows_.Take(bottom);
      if (!rows_.Hidden(top, bottom)) blocks_.push_back({y, top, bottom});
    }
  }

  // Blocks that reach beyond what the extremes close have to be read; their other points close the middle so well that few
  // of the rest have to.
  void ReadBlocks() {
    const auto outer_end = std::partition(
        blocks_.begin(), blocks_.end(), [inner = ClosedByExtremes()](const Block& block) {
          return block.first_row < inner.first || block.last_row > inner.second;
        });
    ReadAll({blocks_.begin(), outer_end});
    constexpr std::ptrdiff_t kAtOnce = 16;
    for (auto begin = outer_end; begin != blocks_.end();) {
      rows_.Close();
      const auto end = begin + std::min(kAtOnce, blocks_.end() - begin);
      ReadAll({begin, std::remove_if(begin, end, [this](const Block& block) {
                 return rows_.Hidden(block.first_row, block.last_row);
               })});
      begin = end;
    }
    rows_.Close();
  }

  // From the beginning of the closed rows around the mean first row to the end of those around the mean last row.
  std::pair<std::int32_t, std::int32_t> ClosedByExtremes() const {
    std::size_t first = 0, last = 0;
    for (const Block& block : blocks_) {
      first += static_cast<std::size_t>(block.first_row);
      last += static_cast<std::size_t>(block.last_row);
    }
    first /= blocks_.size();
    last /= blocks_.size();
    const RowBits& closed = rows_.Closed();
    if (!closed.AllSet(first, first) || !closed.AllSet(last, last)) {
      return {0, std::numeric_limits<std::int32_t>::max()};
    }
    return {static_cast<std::int32_t>(closed.UnsetBefore(first)) + 1,
            static_cast<std::int32_t>(closed.UnsetBehind(last)) - 1};
  }

  void ReadAll(std::span<const Block> blocks) {
    constexpr std::size_t kAhead = 6, kLine = 64 / sizeof(double);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
      if (i + kAhead < blocks.size()) {
        const double* const y = blocks[i + kAhead].y;
        for (std::size_t k = 0; k < kBlock; k += kLine) __builtin_prefetch(y + k);
      }
      TakeStored(blocks[i].y, kBlock);
    }
  }

  // At most kBlock points by their stored Y. Rows first, then what is taken: the first loop waits for nothing.
  void TakeStored(const double* y, std::size_t count) {
    std::int32_t rows[kBlock];
    map_.All(y, view_.zero_value, count, rows);
    for (std::size_t i = 0; i < count; ++i) rows_.Take(rows[i]);
  }

  void TakePoints(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    if (by_blocks_) {
      for (; begin < end; begin += kBlock) {
        TakeStored(chunk.y.data() + begin, std::min(kBlock, end - begin));
      }
    } else {
      for (; begin < end; ++begin) rows_.Take(map_.At(values_.At(chunk, begin)));
    }
  }

  const PointChain& points_;
  const ThinningView& view_;
  const QRect area_;
  ValueScan values_;
  bool by_blocks_;  // the extremes of stored Y tell those of what is drawn
  RowMap map_;
  ColumnRows rows_;
  std::optional<SymbolCrowd> crowd_;
  int column_;
  std::vector<Block> blocks_;  // of the column, not read yet
  SymbolPixels pixels_;        // by column and row from 1 on, while the walk goes on
};

}  // namespace

SymbolPixels OccupiedPixels(const PointChain& points, const ThinningView& view, const QRect& area,
                            SymbolHiding hiding) {
  if (points.Empty() || area.isEmpty() || !view.x.Usable() || !view.y.Usable() ||
      !view.x.Rising()) {
    return {};
  }
  const std::size_t begin = points.LowerBound(view.x.ValueAt(area.left()));
  const std::size_t end = points.UpperBound(view.x.ValueAt(area.right() + 1));
  const bool crowd = static_cast<double>(end - std::min(begin, end)) > kCrowd * area.width();
  hiding.gap = crowd ? std::max(hiding.gap, 1) : 1;
  return SymbolWalk(points, view, area, hiding).Run(begin);
}

}  // namespace tarnwick
