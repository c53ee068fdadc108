// How the points of several DataSets share the rows of one table, so that each keeps the order of its line and the gaps in it.
// Knows points; no characters and no file.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "data/series/point_errors.h"
#include "graph/line_way.h"

namespace tarnwick {

/// Walks the points of one DataSet along its line. The DataSet stays as it is meanwhile.
class LineCursor {
 public:
  explicit LineCursor(const TSeries& series);

  bool AtEnd() const { return place_ == points_.Size(); }
  double X() const { return point_.x; }
  double Y() const { return point_.y; }
  double ErrorOfY() const { return YErrorOf(errors_, point_); }
  double ErrorOfX() const { return XErrorOf(errors_, point_); }
  bool HasErrorOfY() const { return HasYErrors(errors_); }
  /// Whether there are points before this one.
  bool HasBegun() const { return place_ > 0; }
  /// Whether the line is broken before this point.
  bool BeginsPiece() const { return next_break_ < way_.breaks.size() && Break() == place_; }
  bool FollowsX() const { return way_.order.empty(); }
  bool HasGaps() const { return !way_.breaks.empty(); }
  std::size_t Place() const { return place_; }
  void Next();

 private:
  std::size_t Break() const { return way_.breaks[next_break_]; }
  void Settle();

  const PointChain& points_;
  const PointErrors& errors_;
  LineWay way_;
  Point point_;
  ChunkView view_;  // where the line follows the chain
  std::size_t next_chunk_ = 0, offset_ = 0;
  std::size_t place_ = 0, next_break_ = 0;
};

std::vector<LineCursor> CursorsOf(const std::vector<const TSeries*>& series);

/// Whether points of different DataSets stand in one row: their X differ by no more than the tolerance, and by no more than that
/// part of their size.
bool SharesRow(double x, double row_x, double tolerance);

/// DataSets, by their numbers, that share rows. The rows follow the line of the first, or ascending X.
struct SharedRows {
  std::vector<std::size_t> columns;
  bool follows_first = false;
};

/// Blocks of rows one below the other. All DataSets in order of X share rows with each other; one whose X turns back with those
/// whose X are among its own, in its order.
std::vector<SharedRows> SharedRowsOf(const std::vector<const TSeries*>& series, double tolerance);

/// Calls row(first, here) for every row, with the cursor that gives its X and, of each DataSet, whether it stands in it, and
/// gap(block) before one at which the lines of all DataSets that go on are broken. The cursors go on by themselves.
template <class Row, class Gap>
void ForEachRow(const std::vector<SharedRows>& blocks, std::vector<LineCursor>& cursors,
                double tolerance, Row&& row, Gap&& gap);

/// That gaps of a line cannot be seen in the table, since other DataSets go on there, a sentence; empty where all can.
std::string GapsLost(const std::vector<const TSeries*>& series, double tolerance);

// --- what follows is how

/// The cursor that gives the next row its X; null where the block ends.
const LineCursor* NextRowOf(const SharedRows& block, const std::vector<LineCursor>& cursors);
/// Whether all lines of the block that go on are broken before what comes.
bool BreaksAll(const SharedRows& block, const std::vector<LineCursor>& cursors);

template <class Row, class Gap>
void ForEachRow(const std::vector<SharedRows>& blocks, std::vector<LineCursor>& cursors,
                double tolerance, Row&& row, Gap&& gap) {
  std::vector<bool> here(cursors.size());
  for (const SharedRows& block : blocks) {
    here.assign(cursors.size(), false);
    while (const LineCursor* const first = NextRowOf(block, cursors)) {
      if (BreaksAll(block, cursors)) gap(block);
      const double x = first->X();
      for (const std::size_t column : block.columns) {
        const LineCursor& cursor = cursors[column];
        here[column] = !cursor.AtEnd() && SharesRow(cursor.X(), x, tolerance);
      }
      row(*first, here);
      for (const std::size_t column : block.columns) {
        if (here[column]) cursors[column].Next();
      }
    }
  }
}

}  // namespace tarnwick
