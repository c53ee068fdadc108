// Builds a thinned line from what stands in each pixel column. Knows cells and pixels; knows no point chain.
#pragma once

#include <cstddef>

#include "graph/thinning/thinning.h"

namespace tarnwick {

/// Points of one pixel column without a gap between them, in values.
struct Cell {
  int column = 0;
  std::size_t points = 0;
  double first_x = 0, first_y = 0, last_x = 0, last_y = 0;
  double min = 0, max = 0;
  bool after_gap = true;
};

/// Puts cells, given in order of X, together to polylines and runs of columns.
class LineAssembler {
 public:
  static constexpr std::size_t kDenseCell = 3;

  LineAssembler(ThinnedLine& line, const ThinningView& view) : line_(line), view_(view) {}

  /// A cell of kDenseCell points or more becomes a column, as does one of two points beside a column.
  void Add(const Cell& cell) {
    const bool joined = !cell.after_gap && has_previous_;
    const bool follows = joined && InColumns() && line_.columns.back().column + 1 == cell.column;
    if (cell.points >= kDenseCell || (follows && cell.points == 2)) {
      if (!follows) {
        if (joined) AddVertex(cell.first_x, cell.first_y, joined);
        OpenPart(LinePart::Kind::Columns, line_.columns.size());
      }
      PixelColumn& column = line_.columns.emplace_back();
      column.column = cell.column;
      column.first = {cell.first_x, cell.first_y};
      column.last = {cell.last_x, cell.last_y};
      column.top = cell.min;
      column.bottom = cell.max;
      ++line_.parts.back().end;
    } else {
      AddVertex(cell.first_x, cell.first_y, joined);
      if (cell.points > 1) AddVertex(cell.last_x, cell.last_y, true);
    }
    Leave(cell.last_x, cell.last_y);
  }

  /// A point of a polyline; `joined` to the point before.
  void AddVertex(double x, double y, bool joined) {
    const bool in_polyline =
        !line_.parts.empty() && line_.parts.back().kind == LinePart::Kind::Polyline;
    if (!joined || !in_polyline) {
      OpenPart(LinePart::Kind::Polyline, line_.points.size());
      if (joined) line_.points.push_back(Place(previous_x_, previous_y_));
    }
    line_.points.push_back(Place(x, y));
    line_.parts.back().end = line_.points.size();
    Leave(x, y);
  }

  /// Gives the columns, which hold values so far, their pixels; in one loop over all this takes a fraction of the time.
  void Finish() {
    const PixelMap x = view_.x, y = view_.y;
    for (PixelColumn& column : line_.columns) {
      const DoublePair abscissae = x.At(DoublePair{column.first.x, column.last.x});
      const DoublePair ends = y.At(DoublePair{column.first.y, column.last.y});
      const DoublePair extremes = y.At(DoublePair{column.top, column.bottom});
      column.first = {abscissae[0], ends[0]};
      column.last = {abscissae[1], ends[1]};
      column.top = extremes[0] < extremes[1] ? extremes[0] : extremes[1];
      column.bottom = extremes[0] < extremes[1] ? extremes[1] : extremes[0];
    }
  }

 private:
  PixelPoint Place(double x, double y) const { return {view_.x.At(x), view_.y.At(y)}; }
  bool InColumns() const {
    return !line_.parts.empty() && line_.parts.back().kind == LinePart::Kind::Columns;
  }
  void OpenPart(LinePart::Kind kind, std::size_t begin) {
    line_.parts.push_back({kind, begin, begin});
  }
  void Leave(double x, double y) {
    previous_x_ = x;
    previous_y_ = y;
    has_previous_ = true;
  }

  ThinnedLine& line_;
  const ThinningView& view_;
  double previous_x_ = 0, previous_y_ = 0;
  bool has_previous_ = false;
};

}  // namespace tarnwick
