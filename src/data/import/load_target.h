// One DataSet while it is being loaded: its chosen rows, its points on their way into it, its report. Knows values of rows;
// knows no source.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "data/import/load_report.h"
#include "data/import/loader.h"
#include "data/import/row_reading.h"
#include "data/import/row_taking.h"
#include "data/series/data_series.h"

namespace tarnwick {

class LoadTarget {
 public:
  /// Clears the DataSet, whose update has begun. `rows`: number of rows behind the headers, when known.
  LoadTarget(TDataSeries& series, std::optional<std::int64_t> rows, std::int32_t point_limit,
             ColumnTransforms transforms);

  const TDSInfo& Info() const { return series_.Source(); }
  const RowChooser& Chooser() const { return rows_.Chooser(); }
  /// As RowChooser::PassSearched.
  void PassSearched(std::int64_t rows) { rows_.Chooser().PassSearched(rows); }
  LoadReport& Report() { return report_; }
  /// The columns of errors that are taken, by position.
  std::optional<std::int32_t> YErrorColumn() const { return y_error_column_; }
  std::optional<std::int32_t> XErrorColumn() const { return x_error_column_; }
  /// The columns beside X and Y that its column expressions read: those for X, then those for Y.
  const std::vector<std::int32_t>& Columns() const { return columns_; }
  /// Points so far, those on their way among them.
  std::int64_t Points() const;

  /// Empty lines lie between the rows so far and the next.
  void PassBlankLines(std::int32_t lines) { rows_.Pieces().PassBlankLines(lines); }
  /// A line that is no row lies there.
  void PassRemark() { rows_.Pieces().PassRemark(); }
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
  RowTaking rows_;
  ColumnTransforms transforms_;
  std::vector<std::int32_t> columns_;
  std::optional<std::int32_t> y_error_column_, x_error_column_;
  LoadReport report_;
  std::int64_t added_ = 0;            // points given to the DataSet, or on their way
  std::int64_t given_ = 0;            // points given to the DataSet
  std::vector<std::int32_t> begins_;  // the lowest ids behind the first of the beginnings
  std::vector<double> x_;             // points not yet in the DataSet
  std::vector<double> y_;
  std::vector<double> y_errors_;  // of those points; empty unless a column gives them
  std::vector<double> x_errors_;
};

SkipReason ReasonOf(const RowValues& values);

template <class LineOf>
void LoadTarget::Take(RowValues values, LineOf&& line) {
  const std::optional<RowVerdict> verdict = rows_.Take(values);
  if (!verdict) return;
  ++report_.rows_read;
  std::optional<SkipReason> skipped;
  if (verdict == RowVerdict::Skipped) skipped = ReasonOf(values);
  if (verdict == RowVerdict::Point) skipped = AddPoint(values);
  if (!skipped) return;
  rows_.Pieces().PassSkippedRow();
  report_.AddSkipped(*skipped, report_.Skipped() == 0 ? line() : 0);
}

}  // namespace tarnwick
