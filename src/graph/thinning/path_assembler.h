// Builds a thinned line from what stands in each pixel column, where the line may turn back. Knows cells and pixels.
#pragma once

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "graph/thinning/line_assembler.h"
#include "graph/thinning/thinning.h"

namespace tarnwick {

/// Takes cells in the order of the line. Long dense runs from column to column, to the right or to the left, become columns;
/// all else becomes vertices.
class PathAssembler {
 public:
  PathAssembler(ThinnedLine& line, const ThinningView& view) : line_(line), view_(view) {}

  void Add(const Cell& cell) {
    const int step = run_.empty() ? 0 : cell.column - run_.back().column;
    const bool neighbour = step == 1 || step == -1;
    if (cell.after_gap || !neighbour || (run_.size() > 1 && step != step_)) Flush();
    step_ = step;
    run_.push_back(cell);
  }

  /// Puts what is left into the line.
  void Flush() {
    std::size_t points = 0;
    for (const Cell& cell : run_) points += cell.points;
    if (run_.size() >= kLongRun && points >= LineAssembler::kDenseCell * run_.size()) {
      AddColumns();
    } else {
      for (const Cell& cell : run_) AddVertices(cell);
    }
    run_.clear();
  }

 private:
  static constexpr std::size_t kLongRun = 4;

  PixelPoint Place(double x, double y) const { return {view_.x.At(x), view_.y.At(y)}; }

  PixelColumn ColumnOf(const Cell& cell) const {
    const double low = view_.y.At(cell.min), high = view_.y.At(cell.max);
    const auto [top, bottom] = std::minmax(low, high);
    return {cell.column, Place(cell.first_x, cell.first_y), Place(cell.last_x, cell.last_y), top,
            bottom};
  }

  void AddColumns() {
    if (!run_.front().after_gap) AddVertex(Place(run_.front().first_x, run_.front().first_y), true);
    line_.parts.push_back({LinePart::Kind::Columns, line_.columns.size(), line_.columns.size()});
    if (step_ < 0) {
      for (auto cell = run_.rbegin(); cell != run_.rend(); ++cell) {
        PixelColumn& column = line_.columns.emplace_back(ColumnOf(*cell));
        std::swap(column.first, column.last);
      }
    } else {
      for (const Cell& cell : run_) line_.columns.push_back(ColumnOf(cell));
    }
    line_.parts.back().end = line_.columns.size();
    last_ = Place(run_.back().last_x, run_.back().last_y);
  }

  // Which extreme came first is not known; within one column it makes no difference to the eye.
  void AddVertices(const Cell& cell) {
    const PixelColumn column = ColumnOf(cell);
    AddVertex(column.first, !cell.after_gap);
    if (cell.points > 2) {
      const double middle = (column.first.x + column.last.x) / 2;
      const bool falling = column.first.y <= column.last.y;  // in pixels
      const double near = falling ? column.top : column.bottom;
      const double far = falling ? column.bottom : column.top;
      if (near != column.first.y) AddVertex({middle, near}, true);
      if (far != column.last.y) AddVertex({middle, far}, true);
    }
    if (cell.points > 1) AddVertex(column.last, true);
  }

  void AddVertex(PixelPoint point, bool joined) {
    const bool open = !line_.parts.empty() && line_.parts.back().kind == LinePart::Kind::Polyline;
    if (!joined || !open) {
      line_.parts.push_back({LinePart::Kind::Polyline, line_.points.size(), line_.points.size()});
      if (joined) line_.points.push_back(last_);
    }
    line_.points.push_back(point);
    line_.parts.back().end = line_.points.size();
    last_ = point;
  }

  ThinnedLine& line_;
  const ThinningView& view_;
  std::vector<Cell> run_;
  int step_ = 0;  // from column to column in the run
  PixelPoint last_;
};

}  // namespace tarnwick
