#include "graph/thinning/arrival_thinning.h"

#include <algorithm>
#include <limits>

#include "graph/thinning/path_assembler.h"

namespace tarnwick {
namespace {

constexpr int kPiecesOfColumn = 4;  // told apart in one column

class ArrivalWalk {
 public:
  ArrivalWalk(const ArrivalLine& line, const ThinningView& view, ThinnedLine& out)
      : line_(line), view_(view), out_(out, view), x_(line.X()), y_(line.Y()) {
    SeekBreak();
  }

  void Run() {
    for (std::size_t at = 0; at < x_.size();) {
      if (at == next_break_) PassBreak();
      if (at % ArrivalLine::kLarge == 0 &&
          TakeBox(line_.LargeBoxes()[at / ArrivalLine::kLarge], at, ArrivalLine::kLarge)) {
        at += ArrivalLine::kLarge;
      } else if (TakeBox(line_.SmallBoxes()[at / ArrivalLine::kSmall], at, ArrivalLine::kSmall)) {
        at += ArrivalLine::kSmall;
      } else {
        const std::size_t end = std::min(at + ArrivalLine::kSmall, x_.size());
        for (; at < end; ++at) TakePoint(at);
      }
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

  bool TakeBox(const ArrivalBox& box, std::size_t begin, std::size_t most) {
    if (!box.whole || view_.base_line_slope != 0) return false;
    const double low = box.y_min - view_.zero_value, high = box.y_max - view_.zero_value;
    if (!HasPlace(box.x_min, low) || !HasPlace(box.x_min, high)) return false;
    const int column = ColumnOf(box.x_min);
    if (column != ColumnOf(box.x_max)) return false;
    const std::size_t end = std::min(begin + most, x_.size());
    Add(column, end - begin, {x_[begin], Drawn(x_[begin], y_[begin])}, low, high);
    SetLast({x_[end - 1], Drawn(x_[end - 1], y_[end - 1])});
    return true;
  }

  void TakePoint(std::size_t at) {
    if (at == next_break_) PassBreak();
    const double y = Drawn(x_[at], y_[at]);
    if (!HasPlace(x_[at], y)) {
      AddGap();
      return;
    }
    Add(ColumnOf(x_[at]), 1, {x_[at], y}, y, y);
    SetLast({x_[at], y});
  }

  struct Value {
    double x, y;
  };

  void SetLast(const Value& value) {
    cell_.last_x = value.x;
    cell_.last_y = value.y;
  }

  void Add(int column, std::size_t points, const Value& first, double low, double high) {
    if (column != cell_.column) {
      EndCell();
      if (bridged_gap_) after_gap_ = true;
      pieces_ = 0;
    }
    bridged_gap_ = false;
    if (cell_.points == 0) {
      cell_ = {column, points, first.x, first.y, first.x, first.y, low, high, after_gap_};
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
  int pieces_ = 0;  // of the cell's column so far
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
