#include "graph/thinning/bar_thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "graph/thinning/row_bits.h"

namespace tarnwick {
namespace {

/// The pixels of one bar along its cell, held within the cell; empty where it lies outside.
struct Run {
  int first = 0, last = -1;
  bool first_capped = false, last_capped = false;

  bool Empty() const { return last < first; }
};

/// The bars of one pixel column (or row): few stay as they are, of many the union is kept.
class BarCell {
 public:
  explicit BarCell(int length) : length_(length), bits_(static_cast<std::size_t>(length) + 1) {}

  void Take(const Run& run) {
    if (run.Empty()) return;
    if (count_ < kFew) few_[count_] = run;
    ++count_;
    ends_capped_[0] |= run.first == 0 && run.first_capped;
    ends_capped_[1] |= run.last + 1 == length_ && run.last_capped;
    bits_.SetRange(static_cast<std::size_t>(run.first), static_cast<std::size_t>(run.last));
  }
  /// Whether a bar there would show nothing more.
  bool Covers(const Run& run) const {
    return count_ >= kFew && !run.Empty() &&
           bits_.AllSet(static_cast<std::size_t>(run.first), static_cast<std::size_t>(run.last));
  }
  /// Adds what was taken since the last time, `origin` being pixel 0 of the cell.
  void Flush(int at, int origin, std::vector<PixelBar>& bars) {
    if (count_ == 0) return;
    if (count_ <= kFew) {
      for (std::size_t i = 0; i < count_; ++i) {
        const Run& run = few_[i];
        bars.push_back(
            {at, origin + run.first, origin + run.last, run.first_capped, run.last_capped});
      }
    } else {
      bits_.ForEachRun([&](std::size_t begin, std::size_t end) {
        const auto first = static_cast<int>(begin), last = static_cast<int>(end) - 1;
        bars.push_back({at, origin + first, origin + last, first > 0 || ends_capped_[0],
                        last + 1 < length_ || ends_capped_[1]});
      });
    }
    bits_.Clear();
    count_ = 0;
    ends_capped_ = {};
  }

 private:
  static constexpr std::size_t kFew = 3;

  int length_;
  std::array<Run, kFew> few_;
  std::size_t count_ = 0;
  std::array<bool, 2> ends_capped_ = {};
  RowBits bits_;
};

/// Values -> pixels along the bars.
class RunMap {
 public:
  /// The pixels first <= pixel < end are seen; a value without a place lies at the plot's edge on the side of low values.
  RunMap(const PixelMap& map, int first, int end, int plot_first, int plot_end)
      : map_(map),
        first_(first),
        end_(end),
        edge_(map.Rising() ? std::max(first, plot_first) : std::min(end, plot_end) - 1) {}

  /// The bar whose point has a place.
  Run Of(const BarEnds& bar, double zero) const {
    const double middle = bar.low / 2 + bar.high / 2 - zero;
    return map_.Log() && !(middle > 0) ? Run() : OfExtent(bar, zero);
  }
  Run OfExtent(const BarEnds& bar, double zero) const {
    if (!bar.Exist()) return {};
    const bool open = map_.Log() && !(bar.low - zero > 0);
    const double low = open ? edge_ : map_.At(bar.low - zero);
    const double high = map_.At(bar.high - zero);
    Run run = map_.Rising() ? Between(low, high) : Between(high, low);
    if (open) (map_.Rising() ? run.first_capped : run.last_capped) = false;
    return run;
  }

 private:
  Run Between(double from, double to) const {
    if (!(from < end_ && to >= first_ && from <= to)) return {};
    const bool from_seen = from >= first_, to_seen = to < end_;
    const int first = from_seen ? static_cast<int>(std::floor(from)) : first_;
    const int last = to_seen ? static_cast<int>(std::floor(to)) : end_ - 1;
    return {first - first_, last - first_, from_seen, to_seen};
  }

  PixelMap map_;
  int first_, end_;
  double edge_;
};

/// The bars of Y, column by column.
class UprightBars {
 public:
  UprightBars(const PointChain& points, const ErrorBars& bars, const ThinningView& view,
              const BarArea& area)
      : points_(points),
        bars_(bars),
        view_(view),
        area_(area),
        map_(view.y, area.seen.top(), area.seen.bottom() + 1, area.plot.top(),
             area.plot.bottom() + 1),
        cell_(area.seen.height()) {}

  std::vector<PixelBar> Take() {
    const int end_column = area_.seen.right() + 1 + area_.reach;
    std::size_t index = points_.LowerBound(view_.x.ValueAt(area_.seen.left() - area_.reach));
    while (index < points_.Size()) {
      const double x = view_.x.At(points_.At(index).x);
      if (x >= end_column) break;
      if (std::isnan(x)) {  // not above 0 on a logarithmic axis
        ++index;
        continue;
      }
      const int column = static_cast<int>(std::floor(x));
      const std::size_t end = std::max(points_.LowerBound(view_.x.ValueAt(column + 1)), index + 1);
      TakeColumn(index, end);
      cell_.Flush(column, area_.seen.top(), found_);
      index = end;
    }
    return std::move(found_);
  }

 private:
  void TakeColumn(std::size_t begin, std::size_t end) {
    while (begin < end) {
      const std::size_t box = begin / ErrorBars::kBox;
      const std::size_t stop = std::min(end, (box + 1) * ErrorBars::kBox);
      const bool level = view_.base_line_slope == 0;
      const BarEnds& extent = bars_.YBoxes()[box];
      const bool hidden =
          level && (!extent.Exist() || cell_.Covers(map_.OfExtent(extent, view_.zero_value)));
      if (!hidden) TakeBars(begin, stop);
      begin = stop;
    }
  }
  void TakeBars(std::size_t begin, std::size_t end) {
    if (view_.base_line_slope == 0) {
      for (std::size_t i = begin; i < end; ++i) {
        cell_.Take(map_.Of(bars_.Y()[i], view_.zero_value));
      }
      return;
    }
    while (begin < end) {
      const ChunkView chunk = points_.Chunk(points_.ChunkOfIndex(begin));
      const std::size_t stop = std::min(end, chunk.first_index + chunk.x.size());
      for (; begin < stop; ++begin) {
        const double x = chunk.x[begin - chunk.first_index];
        cell_.Take(map_.Of(bars_.Y()[begin], view_.zero_value + view_.base_line_slope * x));
      }
    }
  }

  const PointChain& points_;
  const ErrorBars& bars_;
  const ThinningView& view_;
  const BarArea& area_;
  RunMap map_;
  BarCell cell_;
  std::vector<PixelBar> found_;
};

/// The bars of X, which may reach far: every point's is looked at, unless its box lies beside the view.
std::vector<PixelBar> LevelBars(const PointChain& points, const ErrorBars& bars,
                                const ThinningView& view, const BarArea& area) {
  const int top = area.seen.top() - area.reach, rows = area.seen.height() + 2 * area.reach;
  const int columns = area.seen.width();
  const RunMap map(view.x, area.seen.left(), area.seen.right() + 1, area.plot.left(),
                   area.plot.right() + 1);
  std::vector<BarCell> cells(static_cast<std::size_t>(rows), BarCell(columns));
  points.ForEachChunk([&](const ChunkView& chunk) {
    for (std::size_t i = 0; i < chunk.x.size(); ++i) {
      const std::size_t index = chunk.first_index + i;
      if (i == 0 || index % ErrorBars::kBox == 0) {
        const std::size_t box = index / ErrorBars::kBox;
        if (map.OfExtent(bars.XBoxes()[box], 0).Empty()) {
          i += ErrorBars::kBox - index % ErrorBars::kBox - 1;
          continue;
        }
      }
      const double zero = view.zero_value + view.base_line_slope * chunk.x[i];
      const double row = view.y.At(chunk.y[i] - zero) - top;
      if (!(row >= 0 && row < rows)) continue;
      BarCell& cell = cells[static_cast<std::size_t>(row)];
      const Run run = map.Of(bars.X()[index], 0);
      if (!cell.Covers(run)) cell.Take(run);
    }
  });
  std::vector<PixelBar> found;
  for (int row = 0; row < rows; ++row) {
    cells[static_cast<std::size_t>(row)].Flush(top + row, area.seen.left(), found);
  }
  return found;
}

}  // namespace

PixelBars ThinBars(const PointChain& points, const ErrorBars& bars, const ThinningView& view,
                   const BarArea& area) {
  PixelBars thinned;
  if (area.seen.isEmpty() || !view.x.Usable() || !view.y.Usable()) return thinned;
  if (!bars.Y().empty()) thinned.upright = UprightBars(points, bars, view, area).Take();
  if (!bars.X().empty()) thinned.level = LevelBars(points, bars, view, area);
  return thinned;
}

}  // namespace tarnwick
