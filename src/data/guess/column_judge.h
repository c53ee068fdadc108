// What the rows of a table say about its columns. Knows fields; knows no names.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "data/ds_info.h"
#include "data/fields/text_fields.h"

namespace tarnwick {

/// What the rows looked at say about one column.
struct ColumnGuess {
  bool has_numbers = false;  ///< most of its fields can be read as numbers or dates
  bool is_date = false;      ///< its values are days or times: the axis should show them as such
  ColumnFormat format = ColumnFormat::Automatic;
  bool day_order_open = false;     ///< dates that read with the day first and with the month first
  bool has_zone = false;           ///< times with a zone
  bool has_intervals = false;      ///< intervals of time, read as their beginnings
  bool commas_open = false;        ///< all commas read as the decimals' mark may group thousands
  bool has_units = false;          ///< a unit stands behind the numbers
  bool has_uncertainties = false;  ///< how uncertain they are stands behind them: "± 0.2", " (5)"
  bool has_errors = false;         ///< and can be read as their errors: "± 0.2", "(5)"
  bool has_flags = false;          ///< a mark stands behind some numbers: "12.5*"
  bool has_places = false;         ///< times with a place for a zone
  std::vector<std::string> units = {};  ///< those that stand there, "" for none; only a few of many
  bool is_quoted = false;   ///< all its numbers stand in quotes, and no other column has one so
  bool only_ahead = false;  ///< the first rows have it, the many behind them only other columns
  std::vector<double> values =
      {};                        ///< read by `format`, of the rows looked at; others are left out
  std::size_t later_values = 0;  ///< so many of them, the last, are of rows spread further on

  bool operator==(const ColumnGuess&) const = default;

  /// All values are one.
  bool IsConstant() const;
  /// The values of rows that follow each other.
  std::span<const double> Successive() const {
    return std::span(values).first(values.size() - later_values);
  }
  /// The values count the rows: each is the one before it and 1, and further on they are greater ones.
  bool CountsRows() const;
};

/// More than two values, each the one before it and 1.
bool StepsByOne(std::span<const double> values);

/// Judges columns by these rows, of which the last `later_rows` stand further on. `values` are kept of a few hundred rows.
std::vector<ColumnGuess> JudgeColumns(std::span<const std::string_view> rows,
                                      const TextLayout& layout, std::size_t later_rows = 0);

/// The texts of the first of these rows by columns, all columns as long; missing fields are empty.
std::vector<std::vector<std::string>> SampleTexts(std::span<const std::string_view> rows,
                                                  const TextLayout& layout);

}  // namespace tarnwick
