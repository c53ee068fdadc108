#include "graph/raster/column_bars.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarnwick {

namespace {

// Strokes through a column reach half the width into its neighbours and beyond its extremes, but only those nearest to the
// border or the extreme do so: in the mean this much less is covered. Measured on strokes through noise and random walks.
constexpr double kFringe = 0.25;

constexpr std::size_t kUsualBars = 6;  // that a column makes
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// std::clamp, as two machine instructions.
double Clamped(double value, double low, double high) {
  value = low > value ? low : value;
  return high < value ? high : value;
}

struct Interval {
  double top = kInfinity, bottom = -kInfinity;

  void Widen(double y) { Widen({y, y}); }
  void Widen(const Interval& other) {
    top = other.top < top ? other.top : top;
    bottom = other.bottom > bottom ? other.bottom : bottom;
  }
};

// Every column up to the borders it shares with its neighbours, with `margin` empty ones before and behind.
std::vector<Interval> JoinedIntervals(std::span<const PixelColumn> columns, std::size_t margin) {
  std::vector<Interval> joined(columns.size() + 2 * margin);
  for (std::size_t i = 0; i < columns.size(); ++i) {
    Interval& here = joined[margin + i];
    here.Widen({columns[i].top, columns[i].bottom});
    if (i + 1 == columns.size()) break;
    const PixelPoint a = columns[i].last, b = columns[i + 1].first;
    const double border = columns[i + 1].column;
    const double t = b.x > a.x ? Clamped((border - a.x) / (b.x - a.x), 0, 1) : 0.5;
    const double y = a.y + (b.y - a.y) * t;
    here.Widen(y);
    joined[margin + i + 1].Widen(y);
  }
  return joined;
}

// Intervals of neighbouring columns touch, therefore the stroke over several of them is one interval too.
Interval Hull(const Interval* begin, const Interval* end) {
  Interval hull = *begin;
  while (++begin != end) hull.Widen(*begin);
  return hull;
}

// Takes bars as a list.
class BarList {
 public:
  BarList(std::vector<ColumnBar>& bars, const QRect& clip) : bars_(bars), clip_(clip) {}

  bool Shows(int column) const { return column >= clip_.left() && column <= clip_.right(); }
  void Pixel(int column, int row, int level) {
    if (level != 0) bars_.push_back({QRect(column, row, 1, 1), level});
  }
  void Run(int column, int top, int end, int level) {
    bars_.push_back({QRect(column, top, 1, end - top), level});
  }
  void Block(const QRect& rect) { bars_.push_back({rect, ColumnBar::kLevels}); }

 private:
  std::vector<ColumnBar>& bars_;
  QRect clip_;
};

// Lays bars over a surface.
class BarInks {
 public:
  BarInks(RasterSurface& surface, const QRect& clip, const ColumnInks& inks)
      : surface_(surface), clip_(clip & surface.Clip()), inks_(inks) {}

  bool Shows(int column) const { return column >= clip_.left() && column <= clip_.right(); }
  // Without a branch, which would often be guessed wrong: the ink of level 0 changes nothing.
  void Pixel(int column, int row, int level) {
    const int inside = std::clamp(row, clip_.top(), clip_.bottom());
    surface_.Lay(column, inside, InkOf(inside == row ? level : 0));
  }
  void Run(int column, int top, int end, int level) {
    top = std::max(top, clip_.top());
    end = std::min(end, clip_.bottom() + 1);
    if (top < end) surface_.LayRun(column, top, end, InkOf(level));
  }
  void Block(const QRect& rect) { surface_.Fill(rect, InkOf(ColumnBar::kLevels)); }

 private:
  const RasterInk& InkOf(int level) const { return inks_[static_cast<std::size_t>(level)]; }

  RasterSurface& surface_;
  QRect clip_;
  const ColumnInks& inks_;
};

// Puts full bars of neighbouring columns together: a wide rectangle fills faster than many narrow ones.
template <class Taker>
class FullBars {
 public:
  explicit FullBars(Taker& out) : out_(out) {}
  ~FullBars() { Flush(); }
  FullBars(const FullBars&) = delete;
  FullBars& operator=(const FullBars&) = delete;

  void Add(int column, int top, int end) {
    if (end - top < kTall) {
      out_.Run(column, top, end, ColumnBar::kLevels);
      return;
    }
    // Bars that leave too little in common are not worth a group.
    if (count_ != 0 && (column % kGroup == 0 || column != column_ + count_ ||
                        std::min(end_, end) - std::max(top_, top) < kTall / 2)) {
      Flush();
    }
    if (count_ == 0) {
      column_ = column;
      top_ = top;
      end_ = end;
    }
    top_ = std::max(top_, top);
    end_ = std::min(end_, end);
    ends_[count_++] = {top, end};
  }

 private:
  static constexpr int kGroup = 16;  // pixels in a line of the processor's cache
  static constexpr int kTall = 96;   // rows that make a bar worth a group
  struct Ends {
    int top, end;
  };

  void Flush() {
    if (count_ == 0) return;
    out_.Block(QRect(column_, top_, count_, end_ - top_));
    for (int i = 0; i < count_; ++i) {
      const Ends& bar = ends_[i];
      if (bar.top < top_) out_.Run(column_ + i, bar.top, top_, ColumnBar::kLevels);
      if (bar.end > end_) out_.Run(column_ + i, end_, bar.end, ColumnBar::kLevels);
    }
    count_ = 0;
  }

  Taker& out_;
  int column_ = 0, count_ = 0;
  int top_ = 0, end_ = 0;  // the rows that all bars of the group share
  Ends ends_[kGroup] = {};
};

// Adds one column's interval with the given coverage, its ends by their share of the pixel.
template <class Taker>
class BarWriter {
 public:
  BarWriter(Taker& out, const QRect& clip)
      : out_(out), clip_top_(clip.top()), rows_(clip.height()), full_(out) {}

  // Inline, for it costs as much as the little that it does.
  [[gnu::always_inline]] void Add(int column, double top, double bottom, double coverage) {
    // Rows are counted from the clip: positive, so that cutting off their fraction is rounding down.
    top = Clamped(top - clip_top_, 0, rows_);
    bottom = Clamped(bottom - clip_top_, top, rows_);
    const int first = static_cast<int>(top);
    const int last = static_cast<int>(bottom);
    const double first_share = (bottom < first + 1 ? bottom : first + 1) - top;
    const double last_share = first == last ? 0 : bottom - last;
    out_.Pixel(column, first + clip_top_, LevelOf(coverage * first_share));
    if (first + 1 < last)
      AddRun(column, first + 1 + clip_top_, last + clip_top_, LevelOf(coverage));
    out_.Pixel(column, last + clip_top_, LevelOf(coverage * last_share));
  }

 private:
  static int LevelOf(double coverage) {
    const auto halves = static_cast<unsigned>(2 * coverage * ColumnBar::kLevels + 1);
    return static_cast<int>(halves / 2);  // rounded
  }
  void AddRun(int column, int top, int end, int level) {
    if (level == ColumnBar::kLevels) {
      full_.Add(column, top, end);
    } else if (level != 0) {
      out_.Run(column, top, end, level);
    }
  }

  Taker& out_;
  int clip_top_;
  double rows_;
  FullBars<Taker> full_;
};

template <class Taker>
void WriteBars(std::span<const PixelColumn> columns, double width, const QRect& clip, Taker& out) {
  if (columns.empty()) return;
  const double side = width / 2 - kFringe;
  const auto reach = static_cast<std::ptrdiff_t>(side);
  const double part = side - static_cast<double>(reach);
  const std::ptrdiff_t outer = part > 0 ? reach + 1 : reach;
  const std::vector<Interval> joined =
      JoinedIntervals(columns, static_cast<std::size_t>(2 * outer));
  BarWriter<Taker> writer(out, clip);
  for (std::ptrdiff_t i = -outer; i < std::ssize(columns) + outer; ++i) {
    const int column = columns[0].column + static_cast<int>(i);
    if (!out.Shows(column)) continue;
    const Interval* const here = joined.data() + (i + 2 * outer);
    const Interval full = Hull(here - reach, here + reach + 1);
    const bool has_full = full.top <= full.bottom;
    if (has_full) writer.Add(column, full.top - side, full.bottom + side, 1);
    if (outer == reach) continue;
    Interval wide = full;
    wide.Widen(here[-outer]);
    wide.Widen(here[outer]);
    const double top = wide.top - side, bottom = wide.bottom + side;
    if (!has_full) {
      writer.Add(column, top, bottom, part);
    } else {
      if (wide.top < full.top) writer.Add(column, top, full.top - side, part);
      if (full.bottom < wide.bottom) writer.Add(column, full.bottom + side, bottom, part);
    }
  }
}

}  // namespace

void AddColumnBars(std::span<const PixelColumn> columns, double width, const QRect& clip,
                   std::vector<ColumnBar>& bars) {
  bars.reserve(bars.size() + kUsualBars * columns.size());
  BarList list(bars, clip);
  WriteBars(columns, width, clip, list);
}

void FillColumnBars(std::span<const PixelColumn> columns, double width, const QRect& clip,
                    const ColumnInks& inks, RasterSurface& surface) {
  BarInks laid(surface, clip, inks);
  WriteBars(columns, width, clip, laid);
}

double MeanWander(std::span<const PixelColumn> columns, const QRect& clip) {
  const auto inside = [low = double(clip.top()), high = double(clip.bottom() + 1)](double y) {
    return Clamped(y, low, high);
  };
  double sum = 0;
  for (const PixelColumn& column : columns) {
    sum += inside(column.bottom) - inside(column.top) -
           std::abs(inside(column.last.y) - inside(column.first.y));
  }
  return columns.empty() ? 0 : sum / static_cast<double>(columns.size());
}

}  // namespace tarnwick
