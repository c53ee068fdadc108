// What becomes of each row of one DataSet, whether its source is loaded or followed: chosen or not, of which piece and run, at
// what time where days pass. Knows values of rows; knows no points and no source.
#pragma once

#include <cstdint>
#include <optional>

#include "data/columns/past_midnight.h"
#include "data/import/piece_finder.h"
#include "data/import/row_chooser.h"
#include "data/import/row_reading.h"

namespace tarnwick {

class RowTaking {
 public:
  /// As RowChooser: `info` must outlive it.
  RowTaking(TDSInfo& info, std::optional<std::int64_t> rows, std::int32_t point_limit);

  RowChooser& Chooser() { return chooser_; }
  const RowChooser& Chooser() const { return chooser_; }
  PieceFinder& Pieces() { return pieces_; }
  const PieceFinder& Pieces() const { return pieces_; }
  /// X are times to which the days that pass are added.
  bool GoesOn() const { return goes_on_; }
  /// The rows are of the run that the description chooses, if it does.
  bool OfChosenRun() const { return info_.Run == 0 || info_.Run == pieces_.Run(); }

  /// Decides over the row Chooser().NextRow(), whose X gets the days that have passed. Nothing for a row before the first that is
  /// taken, of another group or another run.
  std::optional<RowVerdict> Take(RowValues& values);

 private:
  TDSInfo& info_;
  RowChooser chooser_;
  PieceFinder pieces_;
  bool goes_on_ = false;
  DayCounter days_;
};

}  // namespace tarnwick
