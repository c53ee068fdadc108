// Which columns of a table are written as the errors of which others. Knows names and sampled values.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "data/columns/error_notation.h"
#include "data/columns/import_source.h"

namespace tarnwick {

/// An axis whose error a column is called without a column of the axis' name.
enum class ErrorAxis : std::uint8_t { None, X, Y };

class ErrorPairs {
 public:
  /// `x`: the column of X, of which a function ("u(x)") is no error.
  ErrorPairs(const ImportSource& source, std::int32_t x);

  /// The column of numbers that `column` is written as the error of. Where a letter alone says so its values may be errors:
  /// none below zero, none larger than what is measured, no steps of the other.
  std::optional<std::int32_t> ValueOf(std::int32_t column) const;
  /// "yerr", "x_err", "ey" right behind a column of values, where no column is called "y" or "x".
  ErrorAxis AxisOf(std::int32_t column) const;

 private:
  struct Pair {
    std::int32_t column = 0, value = 0;
    ErrorSign sign = ErrorSign::Word;
  };

  bool IsCalled(const std::string& squashed) const { return columns_.contains(squashed); }
  /// The one column of that name, of several the nearest before `column`, X last.
  std::optional<std::int32_t> ColumnCalled(const std::string& squashed, std::int32_t column) const;
  std::optional<Pair> PairOf(std::int32_t column) const;
  bool MayHoldErrors(std::int32_t column, std::int32_t value, const ErrorReading& reading) const;
  /// What letters alone say of one column is a chance.
  bool IsBorneOut(const Pair& pair, const std::vector<Pair>& pairs) const;

  const ImportSource& source_;
  std::int32_t x_;
  std::unordered_map<std::string, std::vector<std::int32_t>> columns_;  // by their names, squashed
  std::unordered_map<std::int32_t, std::int32_t> values_;               // of columns of errors
};

}  // namespace tarnwick
