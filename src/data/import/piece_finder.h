// Where the rows of a measurement fall into pieces and runs, as its table shows: by empty lines, by rows without a number. Knows
// values of X and numbers of points; knows no source and no DataSet.
//
// An empty line begins a piece, so does a row in which X and Y stand for no value, and so does a comment or a row without X
// behind which X does not go on in the one direction of the run. Two empty lines, or one behind which X starts anew (nearer to
// where the run began than to where it stands), begin a run, and so does a comment behind which it does after some rows in one
// direction. A row without a number begins a piece where the step of X over it is longer than the others, if these are even: a
// table of columns that are filled now and then has no gaps. Where X rises (or falls) in every row but for those at which it goes
// back to its beginning, each of these begins a piece.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tarnwick {

/// Whether what parts rows does so wherever X goes on.
enum class Break : std::uint8_t { WhereXTurns, Certain };

class PieceFinder {
 public:
  /// Empty lines between the rows so far and the next.
  void PassBlankLines(std::int32_t lines);
  /// A comment.
  void PassRemark() { remark_ = true; }
  /// A row without X: what parts the outlines of a map, certainly where Y stands for no value, too.
  void PassBreak(Break how) {
    break_ = true;
    lifted_ = lifted_ || how == Break::Certain;
  }
  /// A row without a number for X or Y.
  void PassSkippedRow() { skipped_ = true; }
  /// A row that is read: first its X, then as the point number `point` (from 0) that it becomes, if it does.
  void SeeRow(double x);
  /// Rows without anything between them, at least one.
  void SeeRows(std::span<const double> x);
  void TakePoint(std::int64_t point);

  /// The run of the rows read last, from 1.
  std::int32_t Run() const { return run_; }

  /// Why something may begin at a point.
  enum class Cause : std::uint8_t {
    Break,       ///< certain
    SkippedRow,  ///< there is a row without a number before it
    Fall         ///< X, which rose (or fell), begins anew; counts where FallsOnlyToBegin
  };
  struct Beginning {
    std::int64_t point = 0;
    Cause cause = Cause::Break;
  };
  /// By ascending points, none twice.
  std::span<const Beginning> Beginnings() const { return beginnings_; }
  /// So far X rose in every row, but where it fell back to about where it had begun some rows before; or the other way round.
  bool FallsOnlyToBegin() const { return falls_only_to_begin_; }
  /// How many of these rows, from the first, come before X goes back; all of them once X did otherwise.
  std::size_t RowsToFall(std::span<const double> x) const;

 private:
  void SeePiece(double x, bool begins);
  bool StartsAnew(double x) const;
  bool GoesOn(double x) const;

  std::vector<Beginning> beginnings_;
  std::int32_t run_ = 1;
  std::int32_t blanks_ = 0;              // since the last row read
  bool skipped_ = false;                 // since the last point
  bool gap_ = false;                     // likewise
  bool remark_ = false, break_ = false;  // likewise
  bool lifted_ = false;                  // likewise: nothing stands for X and Y
  std::size_t rows_ = 0;                 // of the run
  bool rose_ = false, fell_ = false;     // somewhere in the run
  bool begun_ = false;
  bool fall_ = false;  // since the last point
  int direction_ = 0;  // 1 where X rises, -1 where it falls, 0 where nothing is known yet
  bool falls_only_to_begin_ = true;
  std::size_t piece_rows_ = 0;
  double piece_first_x_ = 0;
  double first_x_ = 0;  // of the run
  double last_x_ = 0;
};

/// Which of the uncertain beginnings are gaps. `x`: of the points in the order in which they came; `begins`: places in it,
/// ascending, each above 0; `certain`: gaps that need no proof, as places too.
std::vector<std::size_t> GapsInEvenSteps(std::span<const double> x,
                                         std::span<const std::size_t> begins,
                                         std::span<const std::size_t> certain);

}  // namespace tarnwick
