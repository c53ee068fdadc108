#include "graph/thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>

#include "graph/value_scan.h"

namespace tarnwick {

namespace {

constexpr double kDensePointsPerColumn = 2;  // below this every point is kept
constexpr int kPiecesOfColumn = 4;           // told apart in one column
constexpr std::size_t kDenseCell = 3;        // points that make a column a bar

// Points of one column without a gap, in values.
struct Cell {
  int column = 0;
  std::size_t points = 0;
  double first_x = 0, first_y = 0, last_x = 0, last_y = 0;
  double min = 0, max = 0;
  bool after_gap = true;
};

// Puts cells, in order, together to polylines and runs of columns.
class LineAssembler {
 public:
  LineAssembler(ThinnedLine& line, const ThinningView& view) : line_(line), view_(view) {}

  void Add(const Cell& cell) {
    const PixelPoint first = Place(cell.first_x, cell.first_y);
    const PixelPoint last = cell.points == 1 ? first : Place(cell.last_x, cell.last_y);
    const bool joined = !cell.after_gap && has_previous_;
    const bool follows = joined && InColumns() && line_.columns.back().column + 1 == cell.column;
    if (cell.points >= kDenseCell || (follows && cell.points == 2)) {
      if (!follows) {
        if (joined) AddVertex(first, joined);
        OpenPart(LinePart::Kind::Columns, line_.columns.size());
      }
      const double low = view_.y.At(cell.min), high = view_.y.At(cell.max);
      line_.columns.push_back({cell.column, first, last, std::min(low, high), std::max(low, high)});
      line_.parts.back().end = line_.columns.size();
    } else {
      AddVertex(first, joined);
      if (cell.points > 1) AddVertex(last, true);
    }
    previous_ = last;
    has_previous_ = true;
  }

  void AddVertex(PixelPoint point, bool joined) {
    const bool in_polyline =
        !line_.parts.empty() && line_.parts.back().kind == LinePart::Kind::Polyline;
    if (!joined || !in_polyline) {
      OpenPart(LinePart::Kind::Polyline, line_.points.size());
      if (joined) line_.points.push_back(previous_);
    }
    line_.points.push_back(point);
    line_.parts.back().end = line_.points.size();
    previous_ = point;
    has_previous_ = true;
  }

  PixelPoint Place(double x, double y) const { return {view_.x.At(x), view_.y.At(y)}; }

 private:
  bool InColumns() const {
    return !line_.parts.empty() && line_.parts.back().kind == LinePart::Kind::Columns;
  }
  void OpenPart(LinePart::Kind kind, std::size_t begin) {
    line_.parts.push_back({kind, begin, begin});
  }

  ThinnedLine& line_;
  const ThinningView& view_;
  PixelPoint previous_;
  bool has_previous_ = false;
};

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
    if (cell_.points == 0) {
      cell_ = {column_, 0, x, y, x, y, range.min, range.max, after_gap_};
    }
    bridged_gap_ = false;
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

void KeepEveryPoint(const PointChain& points, IndexRange range, const ValueScan& values,
                    LineAssembler& out) {
  bool joined = false;
  for (std::size_t index = range.begin; index < range.end;) {
    const ChunkView chunk = points.Chunk(points.ChunkOfIndex(index));
    const std::size_t end = std::min(chunk.x.size(), range.end - chunk.first_index);
    for (std::size_t i = index - chunk.first_index; i < end; ++i) {
      const double y = values.At(chunk, i);
      if (values.HasPlace(y)) out.AddVertex(out.Place(chunk.x[i], y), joined);
      joined = values.HasPlace(y);
    }
    index = chunk.first_index + end;
  }
}

// The first of the ascending values, from `below` on, that is not below `bound`. Near to `guess` it is found at once.
std::size_t FirstNotBelow(std::span<const double> values, std::size_t below, double bound,
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

// Walks the columns from left to right, chunk by chunk.
class ColumnWalk {
 public:
  ColumnWalk(const PointChain& points, IndexRange range, const ThinningView& view, CellBuilder& out)
      : points_(points), view_(view), out_(out) {
    if (range.begin == range.end) return;
    last_number_ = points.ChunkOfIndex(range.end - 1);
    last_limit_ = range.end - points.Chunk(last_number_).first_index;
    GoTo(points.ChunkOfIndex(range.begin));
    chunk_ = points.Chunk(number_);
    offset_ = range.begin - chunk_.first_index;
    more_ = true;
  }

  void Run() {
    while (more_) {
      const int column = ColumnOf(chunk_.x[offset_]);
      out_.SetColumn(column);
      TakeUpTo(column > view_.last_column ? std::numeric_limits<double>::infinity()
                                          : view_.x.ValueAt(column + 1));
    }
    out_.Flush();
  }

 private:
  int ColumnOf(double x) const {
    const double column = std::floor(view_.x.At(x));
    return static_cast<int>(
        std::clamp<double>(column, view_.first_column - 1, view_.last_column + 1));
  }

  void GoTo(std::size_t number) {
    number_ = number;
    if (number != last_number_) next_first_x_ = points_.ChunkFirstX(number + 1);
  }

  bool ChunkEndsBefore(double border) const {
    return number_ != last_number_ && next_first_x_ < border;
  }

  // Asks ahead for what will be read where the next border most likely lies.
  void Prefetch(std::size_t offset) const {
    constexpr std::size_t kLine = 64 / sizeof(double), kLines = 4;
    if (offset >= chunk_.x.size()) return;
    __builtin_prefetch(&chunk_.x[offset]);
    const std::size_t first = offset - std::min(offset, kLine * kLines / 2);
    for (std::size_t line = 0; line < kLines; ++line) {
      __builtin_prefetch(&chunk_.y[std::min(first + line * kLine, chunk_.y.size() - 1)]);
    }
  }

  // Where the border lies when X are spaced evenly.
  std::size_t GuessOf(double border) const {
    if (number_ == last_number_) return offset_ + usual_count_;
    const double first = chunk_.x[0], size = static_cast<double>(chunk_.x.size());
    const double guess = (border - first) / (next_first_x_ - first) * size;
    return guess > 0 ? static_cast<std::size_t>(std::min(guess, size)) : 0;
  }

  // Takes the points with X < border, at least one.
  void TakeUpTo(double border) {
    if (ChunkEndsBefore(border)) {
      out_.AddScanned(chunk_, offset_, chunk_.x.size());
      GoTo(number_ + 1);
      TakeWholeChunks(border);
      chunk_ = points_.Chunk(number_);
      offset_ = 0;
    }
    const std::size_t limit = number_ == last_number_ ? last_limit_ : chunk_.x.size();
    const std::size_t from = offset_ + 1;
    const std::size_t stop = FirstNotBelow(chunk_.x.first(limit), from, border, GuessOf(border));
    usual_count_ = stop - offset_;
    Prefetch(stop + usual_count_);
    out_.AddScanned(chunk_, offset_, stop);
    offset_ = stop;
    if (stop < limit) return;
    more_ = number_ != last_number_;
    if (!more_) return;
    GoTo(number_ + 1);
    chunk_ = points_.Chunk(number_);
    offset_ = 0;
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
  std::size_t offset_ = 0;
  ChunkView chunk_;
  std::size_t usual_count_ = 0;  // points of the column before
  bool more_ = false;
};

}  // namespace

ThinnedLine ThinLine(const PointChain& points, const ThinningView& view) {
  ThinnedLine line;
  if (points.Empty() || view.last_column < view.first_column || !view.x.Usable() ||
      !view.y.Usable() || !view.x.Rising()) {
    return line;
  }
  LineAssembler assembler(line, view);
  const IndexRange range = SeenPoints(points, view);
  const double columns = view.last_column - view.first_column + 1;
  if (static_cast<double>(range.end - range.begin) < kDensePointsPerColumn * columns) {
    KeepEveryPoint(points, range, ValueScan(view), assembler);
    return line;
  }
  line.columns.reserve(static_cast<std::size_t>(columns) + 2);
  CellBuilder cells(assembler, view);
  ColumnWalk(points, range, view, cells).Run();
  return line;
}

}  // namespace tarnwick
