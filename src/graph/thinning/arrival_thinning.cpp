#include "graph/thinning/arrival_thinning.h"

#include <algorithm>
#include <array>
#include <limits>
#include <optional>
#include <span>

#include "graph/thinning/path_assembler.h"

namespace tarnwick {
namespace {

constexpr int kPiecesOfColumn = 4;  // told apart in one column
constexpr std::size_t kAhead = 64;  // pieces that are known before the first of them is taken

class ArrivalWalk {
 public:
  ArrivalWalk(const ArrivalLine& line, const ThinningView& view, ThinnedLine& out)
      : line_(line), view_(view), out_(out, view), x_(line.X()), y_(line.Y()) {
    SeekBreak();
  }

  void Run() {
    std::array<Piece, kAhead> pieces;
    for (std::size_t at = 0; at < x_.size();) {
      std::size_t count = 0;
      for (; count < kAhead && at < x_.size(); at = pieces[count++].end)
        pieces[count] = PieceFrom(at);
      for (const Piece& piece : std::span(pieces).first(count)) Take(piece);
    }
    EndCell();
    out_.Flush();
  }

 private:
  void SeekBreak() {
    next_break_ = breaks_ < line_.Breaks().size() ? line_.Breaks()[breaks_]
                                                  : std::numeric_limits<std::size_t>::max();
  }
  void PassBreak() {
    ++breaks_;
    SeekBreak();
    AddGap();
  }

  bool HasPlace(double x, double y) const {
    return y == y && (!view_.y.Log() || y > 0) && (!view_.x.Log() || x > 0);
  }
  int ColumnOf(double x) const {
    const double pixel = view_.x.At(x);  // far inside the range of int
    const int whole = static_cast<int>(pixel);
    return std::clamp(whole > pixel ? whole - 1 : whole, view_.first_column - 1,
                      view_.last_column + 1);
  }
  double Drawn(double x, double y) const {
    return y - view_.zero_value - (view_.base_line_slope == 0 ? 0 : view_.base_line_slope * x);
  }

  /// Points that follow one another: a box within one column, or the points of the smallest box one by one.
  struct Piece {
    std::size_t begin = 0, end = 0;
    const ArrivalBox* box = nullptr;
    std::optional<int> column;  // of all points
  };

  /// The largest piece that begins here.
  Piece PieceFrom(std::size_t at) const {
    if (at % ArrivalLine::kLarge == 0) {
      const Piece piece = PieceOf(line_.LargeBoxes(), ArrivalLine::kLarge, at);
      if (piece.column) return piece;
    }
    if (at % ArrivalLine::kMiddle == 0) {
      const Piece piece = PieceOf(line_.MiddleBoxes(), ArrivalLine::kMiddle, at);
      if (piece.column) return piece;
    }
    const Piece piece = PieceOf(line_.SmallBoxes(), ArrivalLine::kSmall, at);
    if (!piece.column) {
      Fetch(x_, piece);
      Fetch(y_, piece);
    }
    return piece;
  }

  Piece PieceOf(std::span<const ArrivalBox> boxes, std::size_t each, std::size_t at) const {
    const ArrivalBox& box = boxes[at / each];
    Piece piece{at, std::min(at + each, x_.size()), &box, {}};
    if (!AllHavePlaces(box)) return piece;
    const int column = ColumnOf(box.x_min);
    if (column == ColumnOf(box.x_max)) piece.column = column;
    return piece;
  }

  // Asks for values that are read some pieces later: most of the time went into waiting for the memory.
  static void Fetch(std::span<const double> values, const Piece& piece) {
    constexpr std::size_t kLine = 8;  // values
    for (std::size_t at = piece.begin; at < piece.end; at += kLine) __builtin_prefetch(&values[at]);
  }

  void Take(const Piece& piece) {
    if (piece.begin == next_break_) PassBreak();
    if (piece.column) {
      Add(*piece.column, piece.begin, piece.end - piece.begin, piece.box->y_min - view_.zero_value,
          piece.box->y_max - view_.zero_value);
    } else if (AllHavePlaces(*piece.box)) {
      TakePlacedPoints(piece.begin, piece.end);
    } else {
      for (std::size_t at = piece.begin; at < piece.end; ++at) TakePoint(at);
    }
  }

  /// Whether the line goes through the box unbroken and every point can be drawn where it is.
  bool AllHavePlaces(const ArrivalBox& box) const {
    return box.whole && view_.base_line_slope == 0 &&
           HasPlace(box.x_min, box.y_min - view_.zero_value) &&
           HasPlace(box.x_min, box.y_max - view_.zero_value);
  }

  void TakePlacedPoints(std::size_t at, std::size_t end) {
    for (; at < end; ++at) {
      const double y = y_[at] - view_.zero_value;
      Add(ColumnOf(x_[at]), at, 1, y, y);
    }
  }

  void TakePoint(std::size_t at) {
    if (at == next_break_) PassBreak();
    const double y = Drawn(x_[at], y_[at]);
    if (!HasPlace(x_[at], y)) {
      AddGap();
      return;
    }
    Add(ColumnOf(x_[at]), at, 1, y, y);
  }

  // The first and the last value are read once a cell: those of each box lie far apart in memory.
  void Add(int column, std::size_t begin, std::size_t points, double low, double high) {
    if (column != cell_.column) {
      EndCell();
      if (bridged_gap_) after_gap_ = true;
      pieces_ = 0;
    }
    bridged_gap_ = false;
    last_ = begin + points - 1;
    if (cell_.points == 0) {
      const double x = x_[begin], y = Drawn(x, y_[begin]);
      cell_ = {column, points, x, y, x, y, low, high, after_gap_};
      after_gap_ = false;
      return;
    }
    cell_.points += points;
    cell_.min = std::min(cell_.min, low);
    cell_.max = std::max(cell_.max, high);
  }

  // Many gaps within one column are not told apart by the eye; they must not cost a piece each.
  void AddGap() {
    if (pieces_ >= kPiecesOfColumn) {
      bridged_gap_ = true;
      return;
    }
    EndCell();
    after_gap_ = true;
  }

  void EndCell() {
    if (cell_.points == 0) return;
    cell_.last_x = x_[last_];
    cell_.last_y = Drawn(x_[last_], y_[last_]);
    out_.Add(cell_);
    cell_.points = 0;
    ++pieces_;
  }

  const ArrivalLine& line_;
  const ThinningView& view_;
  PathAssembler out_;
  std::span<const double> x_, y_;
  std::size_t breaks_ = 0;  // passed
  std::size_t next_break_ = 0;
  Cell cell_;
  std::size_t last_ = 0;  // point of the cell
  int pieces_ = 0;        // of the cell's column so far
  bool after_gap_ = true;
  bool bridged_gap_ = false;  // the column's last value had no place, and its cell goes on
};

}  // namespace

ThinnedLine ThinArrivals(const ArrivalLine& line, const ThinningView& view) {
  ThinnedLine thinned;
  if (view.last_column < view.first_column || !view.x.Usable() || !view.y.Usable()) return thinned;
  ArrivalWalk(line, view, thinned).Run();
  return thinned;
}

}  // namespace tarnwick
