// One DataSet while it is being loaded: its chosen rows, its points on their way into it, its report. Knows values of rows;
// knows no source.
#pragma once

#include <cmath>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "data/columns/past_midnight.h"
#include "data/import/load_report.h"
#include "data/import/loader.h"
#include "data/import/piece_finder.h"
#include "data/import/row_chooser.h"
#include "data/import/row_reading.h"
#include "data/series/data_series.h"

namespace tarnwick {

class LoadTarget {
 public:
  /// Clears the DataSet, whose update has begun. `rows`: number of rows behind the headers, when known.
  LoadTarget(TDataSeries& series, std::optional<std::int64_t> rows, std::int32_t point_limit,
             ColumnTransforms transforms);

  const TDSInfo& Info() const { return series_.Source(); }
  const RowChooser& Chooser() const { return chooser_; }
  /// As RowChooser::PassSearched.
  void PassSearched(std::int64_t rows) { chooser_.PassSearched(rows); }
  LoadReport& Report() { return report_; }
  /// The columns of errors that are taken, by position.
  std::optional<std::int32_t> YErrorColumn() const { return y_error_column_; }
  std::optional<std::int32_t> XErrorColumn() const { return x_error_column_; }
  /// The columns beside X and Y that its column expressions read: those for X, then those for Y.
  const std::vector<std::int32_t>& Columns() const { return columns_; }
  /// Points so far, those on their way among them.
  std::int64_t Points() const;

  /// Empty lines lie between the rows so far and the next.
  void PassBlankLines(std::int32_t lines) { pieces_.PassBlankLines(lines); }
  /// A line that is no row lies there.
  void PassRemark() { pieces_.PassRemark(); }
  /// Decides over the row Chooser().NextRow(); `line` answers its line and is asked for the first skipped row only.
  template <class LineOf>
  void Take(RowValues values, LineOf&& line);
  /// True when whole columns can be taken.
  bool TakesColumns() const;
  void TakeColumns(std::span<const double> x, std::span<const double> y,
                   const OwnErrorSpans& errors);
  /// Puts the last points into the DataSet and completes the report.
  void Finish();

 private:
  void TakeStretch(std::span<const double> x, std::span<const double> y,
                   const OwnErrorSpans& errors);
  std::optional<SkipReason> AddPoint(const RowValues& values);
  bool OfChosenRun() const { return Info().Run == 0 || Info().Run == pieces_.Run(); }
  void FlushWhenWorthwhile();
  void Flush();
  void Give(std::span<const double> x, std::span<const double> y, const OwnErrorSpans& errors);
  void CountErrorsOfCounts();
  PointGaps GapsFound() const;
  void AddGapsOfSkippedRows(std::span<const std::int32_t> uncertain,
                            std::vector<std::int32_t>& begins) const;

  TDataSeries& series_;
  LastFit last_fit_;                  // as it was before
  std::optional<PointsMark> fitted_;  // the points that it holds for
  RowChooser chooser_;
  ColumnTransforms transforms_;
  std::vector<std::int32_t> columns_;
  std::optional<std::int32_t> y_error_column_, x_error_column_;
  LoadReport report_;
  std::int64_t added_ = 0;  // points given to the DataSet, or on their way
  PieceFinder pieces_;
  bool goes_on_ = false;  // X are times to which days are added
  DayCounter days_;
  std::int64_t given_ = 0;            // points given to the DataSet
  std::vector<std::int32_t> begins_;  // the lowest ids behind the first of pieces_.Beginnings()
  std::vector<double> x_;             // points not yet in the DataSet
  std::vector<double> y_;
  std::vector<double> y_errors_;  // of those points; empty unless a column gives them
  std::vector<double> x_errors_;
};

SkipReason ReasonOf(const RowValues& values);

template <class LineOf>
void LoadTarget::Take(RowValues values, LineOf&& line) {
  if (goes_on_) values.x = days_.Placed(values.x);
  const RowVerdict verdict = chooser_.Take(values.x, values.y);
  if (verdict == RowVerdict::Passed || !values.of_group) return;
  if (verdict == RowVerdict::Point) pieces_.SeeRow(values.x);
  if (verdict == RowVerdict::Skipped && std::isnan(values.x)) {
    pieces_.PassBreak(IsMissingValue(values.x) && IsMissingValue(values.y) ? Break::Certain
                                                                           : Break::WhereXTurns);
  }
  if (!OfChosenRun()) return;
  ++report_.rows_read;
  std::optional<SkipReason> skipped;
  if (verdict == RowVerdict::Skipped) skipped = ReasonOf(values);
  if (verdict == RowVerdict::Point) skipped = AddPoint(values);
  if (!skipped) return;
  pieces_.PassSkippedRow();
  report_.AddSkipped(*skipped, report_.Skipped() == 0 ? line() : 0);
}

}  // namespace tarnwick
