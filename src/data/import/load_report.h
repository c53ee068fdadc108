// What happened when a DataSet was loaded. A plain value; knows how to say it in one sentence.
#pragma once

#include <cstdint>
#include <string>

namespace tarnwick {

/// Why a row gave no point.
enum class SkipReason : std::uint8_t { XMissing, YMissing, XNotNumber, YNotNumber };

/// Values of a column of errors that are none: an error is a finite number above 0.
struct UnusableErrors {
  bool no_column = false;  ///< the source has no column of that name
  std::int64_t missing = 0;
  std::int64_t not_number = 0;
  std::int64_t zero = 0;
  std::int64_t negative = 0;

  void Count(double error);  ///< NaN as in RowBlock
  std::int64_t All() const { return missing + not_number + zero + negative; }
  bool operator==(const UnusableErrors&) const = default;
};

struct LoadReport {
  bool loaded = false;        ///< false: source not active or a column missing; the old points stay
  std::string absent_column;  ///< a sentence, where one is missing; empty otherwise
  bool cancelled = false;     ///< the points read until then are in the DataSet
  std::int64_t rows_read = 0;  ///< rows looked at, good or not
  std::int64_t points = 0;     ///< points in the DataSet afterwards
  std::int64_t replaced = 0;   ///< rows whose point gave way to a later one at the same X
  std::int64_t x_missing = 0;  ///< rows skipped because X is empty or not there
  std::int64_t y_missing = 0;
  std::int64_t x_not_number =
      0;  ///< rows skipped because the text at X cannot be read as a finite number
  std::int64_t y_not_number = 0;
  std::int64_t first_skipped_line =
      0;  ///< line (record) of the first skipped row from 1; 0 when none was skipped
  SkipReason first_reason = SkipReason::XMissing;
  UnusableErrors y_errors, x_errors;  ///< of the rows that gave points
  std::int32_t runs =
      1;  ///< what empty lines cut the rows into (PieceFinder), up to the last row read
  std::int32_t run = 0;            ///< the only run that was read, from 1; 0: all
  std::int32_t runs_read = 0;      ///< how many of the runs were read together, each by itself
  std::int64_t left_out_from = 0;  ///< the line behind the table, where other lines follow; 0: none
  std::int32_t sampled_every = 1;  ///< the sampling frequency used
  /// Of several columns only this one holds numbers; unasked, it was taken over the numbers of the rows.
  bool lone_column = false;
  bool x_is_date = false;  ///< X holds dates: what is skipped there is none of the calendar
  std::string found_at;  ///< where the source lies that is no longer at its place; empty otherwise

  std::int64_t Skipped() const;
  void AddSkipped(SkipReason reason, std::int64_t line);
  /// What there is to say, each empty for nothing: "every 3rd row", "2 rows skipped (1 X empty, 1 Y not a number; first at
  /// line 17)", "2 rows replaced by later ones at the same X".
  std::string SampledText() const;
  std::string ShownText() const;  ///< "every 3rd row is shown"
  std::string SkippedText() const;
  std::string ReplacedText() const;
  std::string MovedText() const;
  std::string RunsText() const;
  std::string LeftOutText() const;
  /// "3 rows give no usable error of Y (1 empty, 2 zero)", "no column gives the errors of Y".
  std::string ErrorsText() const;
  /// All of it behind the number of points: "4000 points, every 3rd row; 2 rows skipped (Y empty; first at line 17)".
  std::string Message() const;
};

}  // namespace tarnwick
