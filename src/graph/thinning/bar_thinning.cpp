#include "graph/thinning/bar_thinning.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <utility>

#include "graph/thinning/column_rows.h"
#include "graph/thinning/row_bits.h"

namespace tarnwick {
namespace {

/// The pixels of one bar along its cell, held within the cell; empty where it lies outside.
struct Run {
  int first = 0, last = -1;
  bool first_capped = false, last_capped = false;

  bool Empty() const { return last < first; }
  int Middle() const { return (first + last) / 2; }
  bool operator==(const Run&) const = default;
};

/// The bars of one pixel column: few stay as they are, of many the union is kept.
class BarColumn {
 public:
  explicit BarColumn(int length) : length_(length), bits_(static_cast<std::size_t>(length) + 2) {}

  void Take(const Run& run) {
    if (run.Empty()) return;
    if (count_ < kFew) few_[count_] = run;
    ++count_;
    ends_capped_[0] |= run.first == 0 && run.first_capped;
    ends_capped_[1] |= run.last + 1 == length_ && run.last_capped;
    bits_.SetRange(Bit(run.first), Bit(run.last));
  }
  /// Whether a bar there would show nothing more.
  bool Covers(const Run& run) const {
    return count_ >= kFew && !run.Empty() && bits_.AllSet(Bit(run.first), Bit(run.last));
  }
  /// The pixels around one of a bar that was taken which are all covered.
  Run CoveredAround(int pixel) const {
    if (count_ < kFew) return {};
    const std::size_t bit = Bit(pixel);
    return {static_cast<int>(bits_.UnsetBefore(bit)), static_cast<int>(bits_.UnsetBehind(bit)) - 2};
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
        const int first = static_cast<int>(begin) - 1, last = static_cast<int>(end) - 2;
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

  // The bits before the first pixel and behind the last one are never set.
  static std::size_t Bit(int pixel) { return static_cast<std::size_t>(pixel) + 1; }

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
        rising_(map.Rising()),
        first_(first),
        size_(end - first),
        edge_(rising_ ? std::max(first, plot_first) : std::min(end, plot_end) - 1) {}

  /// The bar whose point has a place.
  Run Of(const BarEnds& bar, double zero) const {
    if (!map_.Log()) return OfPlaced(bar, zero);
    const double middle = bar.low / 2 + bar.high / 2 - zero;
    return middle > 0 ? OfExtent(bar, zero) : Run();
  }
  /// Values that surely lie in pixels of the run.
  BarEnds Inside(const Run& run) const {
    if (run.last - run.first < 2) return {};
    const double one = map_.ValueAt(run.first + first_ + 1),
                 other = map_.ValueAt(run.last + first_);
    return {std::min(one, other), std::max(one, other)};
  }
  /// Whether all bars within `extent` that hold `core` have the run of the extent.
  bool AllAlike(const BarEnds& extent, const BarEnds& core) const {
    const bool placed = !map_.Log() || extent.low > 0;
    return placed && core.Exist() && OfExtent(core, 0) == OfExtent(extent, 0);
  }
  Run OfExtent(const BarEnds& bar, double zero) const {
    if (!map_.Log()) return OfPlaced(bar, zero);
    const bool open = !(bar.low - zero > 0);
    const double low = open ? edge_ : map_.At(bar.low - zero);
    Run run = Between(low, map_.At(bar.high - zero));
    if (open) (rising_ ? run.first_capped : run.last_capped) = false;
    return run;
  }

 private:
  Run OfPlaced(const BarEnds& bar, double zero) const {
    const DoublePair pixels = map_.UnheldLinear(DoublePair{bar.low, bar.high} - zero);
    return Between(pixels[0], pixels[1]);
  }
  /// Empty for NaN.
  Run Between(double low, double high) const {
    const double from = (rising_ ? low : high) - first_, to = (rising_ ? high : low) - first_;
    if (!(from < size_ && to >= 0 && from <= to)) return {};
    const int last = static_cast<int>(size_) - 1;
    return {from > 0 ? static_cast<int>(from) : 0, to < size_ ? static_cast<int>(to) : last,
            from >= 0, to < size_};
  }

  PixelMap map_;
  bool rising_;
  double first_, size_;
  double edge_;
};

/// The bars of Y, column by column.
class UprightBars {
  static constexpr int kWorthALook = 8;  // bars of a box that were not hidden

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
      covered_run_ = {};
      covered_ = {};
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
      // Most bars of a crowd lie where others cover the middle of the column already.
      const double low = covered_.low + view_.zero_value, high = covered_.high + view_.zero_value;
      int within = 0, taken = 0;
      for (std::size_t i = begin; i < end; ++i) {
        const BarEnds& bar = bars_.Y()[i];
        if (bar.low >= low && bar.high <= high) continue;
        const Run run = map_.Of(bar, view_.zero_value);
        if (run.Empty()) continue;
        within = run.Middle();
        ++taken;
        cell_.Take(run);
      }
      if (taken > kWorthALook) NoteCovered(covered_run_.Empty() ? within : covered_run_.Middle());
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

  void NoteCovered(int pixel) {
    covered_run_ = cell_.CoveredAround(pixel);
    covered_ = map_.Inside(covered_run_);
  }

  const PointChain& points_;
  const ErrorBars& bars_;
  const ThinningView& view_;
  const BarArea& area_;
  RunMap map_;
  BarColumn cell_;
  Run covered_run_;  // in the column at hand
  BarEnds covered_;  // corrected values in it
  std::vector<PixelBar> found_;
};

/// Pixels of a row in which a bar would show nothing more.
struct Stretch {
  int first = std::numeric_limits<int>::max(), last = std::numeric_limits<int>::min();

  bool Holds(const Run& run) const { return run.first >= first && run.last <= last; }
  /// False, and nothing done, unless the run begins within or right behind it.
  bool Grow(const Run& run) {
    if (run.first < first || run.first - 1 > last) return false;
    last = std::max(last, run.last);
    return true;
  }
};

/// The bars of one pixel row, which come from the left to the right but for what their lengths differ.
class BarRow {
 public:
  void Take(const Run& run) {
    if (run.Empty()) return;
    ++count_;
    if (count_ <= kFew || !Touch(runs_.back(), run)) {
      runs_.push_back(run);
    } else {
      Join(runs_.back(), run);
    }
  }
  Stretch Covered() const {
    return count_ < kFew ? Stretch() : Stretch{runs_.back().first, runs_.back().last};
  }
  /// Takes what Covered() was grown by, by bars whose last ends have caps.
  void Take(const Stretch& grown) {
    if (count_ < kFew || grown.last <= runs_.back().last) return;
    runs_.back().last = grown.last;
    runs_.back().last_capped = true;
    count_ = kFew + 1;
  }
  void Flush(int at, int origin, std::vector<PixelBar>& bars) {
    if (count_ > kFew) Merge();
    for (const Run& run : runs_) {
      bars.push_back(
          {at, origin + run.first, origin + run.last, run.first_capped, run.last_capped});
    }
  }

 private:
  static constexpr std::size_t kFew = 3;

  static bool Touch(const Run& one, const Run& other) {
    return other.first <= one.last + 1 && one.first <= other.last + 1;
  }
  static void Join(Run& whole, const Run& run) {
    if (run.first < whole.first) {
      whole.first = run.first;
      whole.first_capped = run.first_capped;
    }
    if (run.last > whole.last) {
      whole.last = run.last;
      whole.last_capped = run.last_capped;
    }
  }
  void Merge() {
    std::ranges::sort(runs_, {}, &Run::first);
    std::vector<Run> merged = {runs_.front()};
    for (const Run& run : runs_) {
      if (Touch(merged.back(), run)) {
        Join(merged.back(), run);
      } else {
        merged.push_back(run);
      }
    }
    runs_ = std::move(merged);
  }

  std::size_t count_ = 0;
  std::vector<Run> runs_;
};

/// The bars of X, which may reach far: every point's is looked at, unless its box lies beside the view.
class LevelBars {
 public:
  LevelBars(const PointChain& points, const ErrorBars& bars, const ThinningView& view,
            const BarArea& area)
      : points_(points),
        bars_(bars),
        view_(view),
        area_(area),
        top_(area.seen.top() - area.reach),
        rows_(area.seen.height() + 2 * area.reach),
        row_map_(view.y, top_, rows_),
        map_(view.x, area.seen.left(), area.seen.right() + 1, area.plot.left(),
             area.plot.right() + 1),
        bar_rows_(static_cast<std::size_t>(rows_) + 2),
        covered_(bar_rows_.size()) {
    covered_.front() =
        covered_.back() = {std::numeric_limits<int>::min(), std::numeric_limits<int>::max()};
  }

  std::vector<PixelBar> Take() {
    points_.ForEachChunk([this](const ChunkView& chunk) {
      for (std::size_t i = 0; i < chunk.x.size();) {
        const std::size_t index = chunk.first_index + i, in_box = index % ErrorBars::kBox;
        const std::size_t count = std::min(chunk.x.size() - i, ErrorBars::kBox - in_box);
        TakeBox(chunk, i, count, index / ErrorBars::kBox);
        i += count;
      }
    });
    std::vector<PixelBar> found;
    for (int row = 0; row < rows_; ++row) {
      const auto i = static_cast<std::size_t>(row) + 1;
      bar_rows_[i].Take(covered_[i]);
      bar_rows_[i].Flush(top_ + row, area_.seen.left(), found);
    }
    return found;
  }

 private:
  void TakeBox(const ChunkView& chunk, std::size_t begin, std::size_t count, std::size_t box) {
    const BarEnds& extent = bars_.XBoxes()[box];
    const Run outermost = map_.OfExtent(extent, 0);
    if (outermost.Empty()) return;
    std::array<std::int32_t, ErrorBars::kBox> rows{};
    row_map_.All(chunk.y.data() + begin, view_.zero_value, count, rows.data());
    if (view_.base_line_slope != 0) {
      for (std::size_t i = 0; i < count; ++i) rows[i] = RowOnSlope(chunk, begin + i);
    }
    const std::span rows_of_bars(rows.data(), count);
    if (map_.AllAlike(extent, bars_.XCores()[box])) {
      for (const std::int32_t row : rows_of_bars) TakeBar(static_cast<std::size_t>(row), outermost);
    } else {
      TakeBars(rows_of_bars, outermost, &bars_.X()[chunk.first_index + begin]);
    }
  }
  /// `outermost` holds all of them.
  void TakeBars(std::span<const std::int32_t> rows, const Run& outermost, const BarEnds* bars) {
    for (std::size_t i = 0; i < rows.size(); ++i) {
      const auto row = static_cast<std::size_t>(rows[i]);
      if (!covered_[row].Holds(outermost)) TakeBar(row, map_.Of(bars[i], 0));
    }
  }
  void TakeBar(std::size_t row, const Run& run) {
    // A crowd's bars come one right behind the other: only the stretch is touched.
    if (run.last_capped && covered_[row].Grow(run)) return;
    if (covered_[row].Holds(run)) return;
    bar_rows_[row].Take(covered_[row]);
    bar_rows_[row].Take(run);
    covered_[row] = bar_rows_[row].Covered();
  }
  std::int32_t RowOnSlope(const ChunkView& chunk, std::size_t i) const {
    return row_map_.At(chunk.y[i] - view_.zero_value - view_.base_line_slope * chunk.x[i]);
  }

  const PointChain& points_;
  const ErrorBars& bars_;
  const ThinningView& view_;
  const BarArea& area_;
  int top_, rows_;
  RowMap row_map_;
  RunMap map_;
  std::vector<BarRow> bar_rows_;  // the first and the last stand for whatever is not seen
  std::vector<Stretch> covered_;  // of each of them; nothing more is to be taken there
};

}  // namespace

PixelBars ThinBars(const PointChain& points, const ErrorBars& bars, const ThinningView& view,
                   const BarArea& area) {
  PixelBars thinned;
  if (area.seen.isEmpty() || !view.x.Usable() || !view.y.Usable()) return thinned;
  if (!bars.Y().empty()) thinned.upright = UprightBars(points, bars, view, area).Take();
  if (!bars.X().empty()) thinned.level = LevelBars(points, bars, view, area).Take();
  return thinned;
}

}  // namespace tarnwick
