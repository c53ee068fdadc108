// Where the rows of a measurement fall into pieces and runs, as its table shows: by empty lines, by rows without a number. Knows
// values of X and numbers of points; knows no source and no DataSet.
//
// An empty line begins a piece, and so does a comment or a row without X behind which X does not go on in the one direction of
// the run. Two empty lines, or one behind which X starts anew (nearer to where the run began than to where it stands), begin a
// run, and so does a comment behind which it does after some rows in one direction. A row without a number begins a piece where
// the step of X over it is longer than the others, if these are even: a table of columns that are filled now and then has no
// gaps.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

class PieceFinder {
 public:
  /// Empty lines between the rows so far and the next.
  void PassBlankLines(std::int32_t lines);
  /// A comment.
  void PassRemark() { remark_ = true; }
  /// A row without X: what parts the outlines of a map.
  void PassBreak() { break_ = true; }
  /// A row without a number for X or Y.
  void PassSkippedRow() { skipped_ = true; }
  /// A row that is read: first its X, then as the point number `point` (from 0) that it becomes, if it does.
  void SeeRow(double x);
  /// Rows without anything between them, at least one.
  void SeeRows(std::span<const double> x);
  void TakePoint(std::int64_t point);

  /// The run of the rows read last, from 1.
  std::int32_t Run() const { return run_; }

  /// Where something may begin.
  struct Beginning {
    std::int64_t point = 0;
    bool certain = false;  ///< else there is a row without a number before it
  };
  /// By ascending points, none twice.
  std::span<const Beginning> Beginnings() const { return beginnings_; }

 private:
  bool StartsAnew(double x) const;
  bool GoesOn(double x) const;

  std::vector<Beginning> beginnings_;
  std::int32_t run_ = 1;
  std::int32_t blanks_ = 0;              // since the last row read
  bool skipped_ = false;                 // since the last point
  bool gap_ = false;                     // likewise
  bool remark_ = false, break_ = false;  // likewise
  std::size_t rows_ = 0;                 // of the run
  bool rose_ = false, fell_ = false;     // somewhere in the run
  bool begun_ = false;
  double first_x_ = 0;  // of the run
  double last_x_ = 0;
};

/// Which of the uncertain beginnings are gaps. `x`: of the points in the order in which they came; `begins`: places in it,
/// ascending, each above 0; `certain`: gaps that need no proof, as places too.
std::vector<std::size_t> GapsInEvenSteps(std::span<const double> x,
                                         std::span<const std::size_t> begins,
                                         std::span<const std::size_t> certain);

}  // namespace tarnwick
