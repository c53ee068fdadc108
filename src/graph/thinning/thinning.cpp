#include "graph/thinning/thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "graph/thinning/line_assembler.h"
#include "graph/thinning/value_scan.h"

namespace tarnwick {

namespace {

constexpr double kDensePointsPerColumn = 2;  // below this every point is kept
constexpr int kPiecesOfColumn = 4;           // told apart in one column
constexpr std::size_t kColumnsAhead = 2;     // whose points are asked for before they are read

// Gathers runs of points into cells.
class CellBuilder {
 public:
  CellBuilder(LineAssembler& out, const ThinningView& view) : out_(out), values_(view) {}

  void SetColumn(int column) {
    if (column == column_) return;
    Flush();
    if (bridged_gap_) after_gap_ = true;
    bridged_gap_ = false;
    pieces_ = 0;
    column_ = column;
  }

  void AddScanned(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    if (begin == end) return;
    const ValueRange range = values_.Scan(chunk, begin, end);
    if (range.gaps) {
      AddOneByOne(chunk, begin, end);
    } else {
      Add(chunk.x[begin], values_.At(chunk, begin), end - begin, range);
      SetLast(chunk.x[end - 1], values_.At(chunk, end - 1));
    }
  }

  // A whole chunk within the column through its extremes alone. False, and nothing done, where they do not tell enough.
  // The last of several in a row must be given to NoteEndOf.
  bool AddUnread(const PointChain& points, std::size_t number) {
    ValueRange range;
    if (cell_.points == 0 || !values_.FromExtremes(points, number, range)) return false;
    Add(0, 0, PointChunk::kCapacity, range);
    return true;
  }

  // Many gaps within one column are not told apart by the eye; they must not cost a piece each.
  void AddGap() {
    if (pieces_ >= kPiecesOfColumn) {
      bridged_gap_ = true;
      return;
    }
    Flush();
    after_gap_ = true;
  }

  void Flush() {
    if (cell_.points == 0) return;
    out_.Add(cell_);
    cell_.points = 0;
    after_gap_ = false;
    ++pieces_;
  }

  int Column() const { return column_; }
  /// True when no more gaps in the column will be told apart.
  bool ColumnIsFull() const { return pieces_ >= kPiecesOfColumn; }

  void NoteEndOf(const ChunkView& chunk) {
    const double y = values_.At(chunk, chunk.x.size() - 1);
    if (values_.HasPlace(y)) SetLast(chunk.x.back(), y);
  }

 private:
  void SetLast(double x, double y) {
    cell_.last_x = x;
    cell_.last_y = y;
  }

  void Add(double x, double y, std::size_t points, const ValueRange& range) {
    bridged_gap_ = false;
    if (cell_.points == 0) {
      cell_.column = column_;
      cell_.points = points;
      cell_.first_x = x;
      cell_.first_y = y;
      cell_.min = range.min;
      cell_.max = range.max;
      cell_.after_gap = after_gap_;
      return;
    }
    cell_.points += points;
    cell_.min = std::min(cell_.min, range.min);
    cell_.max = std::max(cell_.max, range.max);
  }

  void AddOneByOne(const ChunkView& chunk, std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      const double y = values_.At(chunk, i);
      if (!values_.HasPlace(y)) {
        AddGap();
        continue;
      }
      Add(chunk.x[i], y, 1, {y, y, false});
      SetLast(chunk.x[i], y);
    }
  }

  LineAssembler& out_;
  ValueScan values_;
  Cell cell_;
  int column_ = std::numeric_limits<int>::min();
  int pieces_ = 0;  // of this column so far
  bool after_gap_ = true;
  bool bridged_gap_ = false;  // the column's last value had no place, and its cell goes on
};

struct IndexRange {
  std::size_t begin = 0, end = 0;
};

// The points seen and one neighbour on either side.
IndexRange SeenPoints(const PointChain& points, const ThinningView& view) {
  const std::size_t first_placed = view.x.Log() ? points.UpperBound(0) : 0;
  const std::size_t first = points.LowerBound(view.x.ValueAt(view.first_column));
  const std::size_t end = points.UpperBound(view.x.ValueAt(view.last_column + 1));
  IndexRange range{first == 0 ? 0 : first - 1, std::min(end + 1, points.Size())};
  range.begin = std::max(range.begin, first_placed);
  range.end = std::max(range.begin, range.end);
  return range;
}

using Breaks = std::span<const std::size_t>;

void KeepEveryPoint(const PointChain& points, IndexRange range, const ValueScan& values,
                    Breaks breaks, LineAssembler& out) {
  bool joined = false;
  auto next_break = std::ranges::lower_bound(breaks, range.begin);
  for (std::size_t index = range.begin; index < range.end;) {
    const ChunkView chunk = points.Chunk(points.ChunkOfIndex(index));
    const std::size_t end = std::min(chunk.x.size(), range.end - chunk.first_index);
    for (std::size_t i = index - chunk.first_index; i < end; ++i) {
      const double y = values.At(chunk, i);
      if (next_break != breaks.end() && *next_break == chunk.first_index + i) {
        joined = false;
        ++next_break;
      }
      if (values.HasPlace(y)) out.AddVertex(chunk.x[i], y, joined);
      joined = values.HasPlace(y);
    }
    index = chunk.first_index + end;
  }
}

// The first of the ascending values, from `below` on, that is not below `bound`; sought outwards from `guess`.
std::size_t SearchNear(std::span<const double> values, std::size_t below, double bound,
                       std::size_t guess) {
  std::size_t end = values.size();  // the answer lies in [below, end]
  guess = std::clamp(guess, below, end);
  for (std::size_t step = 1; guess > below && !(values[guess - 1] < bound); step *= 2) {
    end = guess - 1;
    guess = end - std::min(step, end - below);
  }
  below = guess;
  for (std::size_t step = 1; guess < end && values[guess] < bound; step *= 2) {
    below = guess + 1;
    guess = below + std::min(step, end - below);
  }
  end = std::min(end, guess);
  const auto first = values.begin();
  return static_cast<std::size_t>(std::lower_bound(first + static_cast<std::ptrdiff_t>(below),
                                                   first + static_cast<std::ptrdiff_t>(end),
                                                   bound) -
                                  first);
}

// The same; where X are spaced evenly the guess is right.
std::size_t FirstNotBelow(std::span<const double> values, std::size_t below, double bound,
                          std::size_t guess) {
  const bool right = guess > below && guess < values.size() && values[guess - 1] < bound &&
                     !(values[guess] < bound);
  return right ? guess : SearchNear(values, below, bound, guess);
}

// Walks the columns from left to right, chunk by chunk.
class ColumnWalk {
 public:
  ColumnWalk(const PointChain& points, IndexRange range, const ThinningView& view, CellBuilder& out)
      : points_(points), view_(view), out_(out) {
    if (range.begin == range.end) return;
    last_number_ = points.ChunkOfIndex(range.end - 1);
    last_limit_ = range.end - points.Chunk(last_number_).first_index;
    GoTo(points.ChunkOfIndex(range.begin));
    Open();
    offset_ = range.begin - chunk_.first_index;
    more_ = true;
  }

  void Run() {
    int column = view_.first_column - 2;
    while (more_) {
      column = ColumnOf(chunk_.x[offset_], column + 1);
      out_.SetColumn(column);
      TakeUpTo(column > view_.last_column ? std::numeric_limits<double>::infinity()
                                          : view_.x.ValueAt(column + 1));
    }
  }

 private:
  // Where the likely column is the right one, nothing after it waits for X.
  int ColumnOf(double x, int likely) const {
    const double pixel = view_.x.At(x);  // far inside the range of int
    if (pixel >= likely && pixel < likely + 1 && likely <= view_.last_column) [[likely]] {
      return std::max(likely, view_.first_column - 1);
    }
    const int whole = static_cast<int>(pixel);
    const int column = whole > pixel ? whole - 1 : whole;
    return std::clamp(column, view_.first_column - 1, view_.last_column + 1);
  }

  void GoTo(std::size_t number) {
    number_ = number;
    if (number != last_number_) next_first_x_ = points_.ChunkFirstX(number + 1);
  }

  // Starts to read the chunk gone to.
  void Open() {
    chunk_ = points_.Chunk(number_);
    offset_ = 0;
    const bool last = number_ == last_number_;
    limit_ = last ? last_limit_ : chunk_.x.size();
    const double extent = (last ? chunk_.x[limit_ - 1] : next_first_x_) - chunk_.x[0];
    points_per_x_ = static_cast<double>(last ? limit_ - 1 : limit_) / extent;
    next_ = last ? nullptr : &points_.ChunkToCome(number_ + 1);
    if (next_ != nullptr) next_->PrefetchExtremes(chunk_.chunk->Room(), chunk_.chunk->HasIdRoom());
  }

  bool ChunkEndsBefore(double border) const {
    return number_ != last_number_ && next_first_x_ < border;
  }

  // Asks ahead for what will be read where a border to come most likely lies.
  void Prefetch(std::size_t offset) const {
    if (offset < limit_) {
      chunk_.chunk->PrefetchAround(offset, chunk_.chunk->Room());
    } else if (next_ != nullptr) {
      next_->PrefetchAround(offset - limit_, chunk_.chunk->Room());
    }
  }

  // The first point not before the border when X are spaced evenly.
  std::size_t GuessOf(double border) const {
    const double before = (border - chunk_.x[0]) * points_per_x_;
    return before >= 0
               ? static_cast<std::size_t>(std::min<double>(before, PointChunk::kCapacity)) + 1
               : 0;
  }

  // Takes the points with X < border, at least one.
  void TakeUpTo(double border) {
    if (ChunkEndsBefore(border)) {
      out_.AddScanned(chunk_, offset_, chunk_.x.size());
      GoTo(number_ + 1);
      TakeWholeChunks(border);
      Open();
    }
    const std::size_t stop =
        FirstNotBelow(chunk_.x.first(limit_), offset_ + 1, border, GuessOf(border));
    Prefetch(stop + kColumnsAhead * (stop - offset_));
    out_.AddScanned(chunk_, offset_, stop);
    offset_ = stop;
    if (stop < limit_) return;
    more_ = number_ != last_number_;
    if (!more_) return;
    GoTo(number_ + 1);
    Open();
  }

  void TakeWholeChunks(double border) {
    bool unread = false;
    for (; ChunkEndsBefore(border); GoTo(number_ + 1)) {
      if (out_.AddUnread(points_, number_)) {
        unread = true;
        continue;
      }
      if (unread) out_.NoteEndOf(points_.Chunk(number_ - 1));
      unread = false;
      const ChunkView chunk = points_.Chunk(number_);
      out_.AddScanned(chunk, 0, chunk.x.size());
    }
    if (unread) out_.NoteEndOf(points_.Chunk(number_ - 1));
  }

  const PointChain& points_;
  const ThinningView& view_;
  CellBuilder& out_;
  std::size_t last_number_ = 0;  // chunk of the last point seen
  std::size_t last_limit_ = 0;   // its points seen
  std::size_t number_ = 0;
  double next_first_x_ = 0;  // of the chunk behind, unless this is the last
  ChunkView chunk_;
  const PointChunk* next_ = nullptr;  // not read yet
  std::size_t limit_ = 0;             // of the chunk's points seen
  double points_per_x_ = 0;           // in the mean of the chunk
  std::size_t offset_ = 0;
  bool more_ = false;
};

// Piece by piece; of a column with many pieces the last end alone is told.
void WalkPieces(const PointChain& points, IndexRange range, const ThinningView& view, Breaks breaks,
                CellBuilder& cells) {
  for (auto next = std::ranges::upper_bound(breaks, range.begin);;) {
    const bool last = next == breaks.end() || *next >= range.end;
    const std::size_t end = last ? range.end : *next;
    ColumnWalk(points, {range.begin, end}, view, cells).Run();
    if (last) break;
    cells.AddGap();
    range.begin = end;
    ++next;
    if (!cells.ColumnIsFull()) continue;
    if (cells.Column() > view.last_column) {
      next = breaks.end();
    } else {
      const std::size_t behind = points.LowerBound(view.x.ValueAt(cells.Column() + 1));
      next = std::lower_bound(next, breaks.end(), behind);
    }
  }
  cells.Flush();
}

ThinnedLine Thinned(const PointChain& points, const ThinningView& view, Breaks breaks) {
  ThinnedLine line;
  if (points.Empty() || view.last_column < view.first_column || !view.x.Usable() ||
      !view.y.Usable() || !view.x.Rising()) {
    return line;
  }
  LineAssembler assembler(line, view);
  const IndexRange range = SeenPoints(points, view);
  const double columns = view.last_column - view.first_column + 1;
  if (static_cast<double>(range.end - range.begin) < kDensePointsPerColumn * columns) {
    KeepEveryPoint(points, range, ValueScan(view), breaks, assembler);
    return line;
  }
  line.columns.reserve(static_cast<std::size_t>(columns));
  CellBuilder cells(assembler, view);
  WalkPieces(points, range, view, breaks, cells);
  assembler.Finish();
  return line;
}

#if defined(__x86_64__)
// The same for processors that have these instructions, all in one piece: it takes about half the time.
[[gnu::target("avx2"), gnu::flatten]] ThinnedLine ThinnedByAvx2(const PointChain& points,
                                                                const ThinningView& view,
                                                                Breaks breaks) {
  return Thinned(points, view, breaks);
}
#endif

}  // namespace

ThinnedLine ThinLine(const PointChain& points, const ThinningView& view,
                     std::span<const std::size_t> breaks) {
#if defined(__x86_64__)
  if (__builtin_cpu_supports("avx2")) return ThinnedByAvx2(points, view, breaks);
#endif
  return Thinned(points, view, breaks);
}

}  // namespace tarnwick
