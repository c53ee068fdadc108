#include "data/columns/error_pairs.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <tuple>

#include "base/quantile.h"
#include "data/columns/error_names.h"
#include "data/columns/value_order.h"

namespace tarnwick {
namespace {

/// Each is as large as the other's way to its next value, or to its last one.
bool AreStepsOf(const std::vector<double>& values, const std::vector<double>& steps) {
  constexpr double kNear = 1e-3;
  const std::size_t count = std::min(values.size(), steps.size());
  if (count < 3) return false;
  const auto agree = [&](std::size_t shift) {
    for (std::size_t i = 1; i < count; ++i) {
      const double way = std::abs(values[i] - values[i - 1]);
      if (std::abs(steps[i - shift] - way) > kNear * way) return false;
    }
    return true;
  };
  return agree(0) || agree(1);
}

}  // namespace

ErrorPairs::ErrorPairs(const ImportSource& source, std::int32_t x) : source_(source), x_(x) {
  const std::vector<std::int32_t> numbers = source.NumberColumns();
  for (const std::int32_t column : numbers) {
    const std::string name = source.NameOf(column);
    if (NamesErrors(name)) continue;
    columns_[SquashedName(name)].push_back(column);
    columns_[SquashedWithoutUnit(name)].push_back(column);
  }
  columns_.erase("");
  std::vector<Pair> pairs;
  for (const std::int32_t column : numbers) {
    if (const std::optional<Pair> pair = PairOf(column)) pairs.push_back(*pair);
  }
  for (const Pair& pair : pairs) {
    if (IsBorneOut(pair, pairs)) values_.emplace(pair.column, pair.value);
  }
}

std::optional<std::int32_t> ErrorPairs::ValueOf(std::int32_t column) const {
  const auto found = values_.find(column);
  if (found == values_.end()) return std::nullopt;
  return found->second;
}

std::optional<std::int32_t> ErrorPairs::ColumnCalled(const std::string& squashed,
                                                     std::int32_t column) const {
  const auto found = columns_.find(squashed);
  if (found == columns_.end()) return std::nullopt;
  // Of the time "t" and the temperature "T" it is the latter's error that is of interest.
  const auto distance = [&](std::int32_t one) {
    return std::tuple(one == x_, one > column, std::abs(column - one));
  };
  return std::ranges::min(found->second, {}, distance);
}

std::optional<ErrorPairs::Pair> ErrorPairs::PairOf(std::int32_t column) const {
  if (column == x_) return std::nullopt;
  for (const ErrorReading& reading : ReadAsError(source_.NameOf(column))) {
    const std::optional<std::int32_t> value = ColumnCalled(reading.value, column);
    if (value && *value != column && MayHoldErrors(column, *value, reading)) {
      return Pair{column, *value, reading.sign};
    }
  }
  return std::nullopt;
}

bool ErrorPairs::MayHoldErrors(std::int32_t column, std::int32_t value,
                               const ErrorReading& reading) const {
  std::vector<double> errors = source_.GuessOf(column).values;
  const auto is_whole = [](double error) { return error == std::floor(error); };
  if (reading.counted && std::ranges::all_of(errors, is_whole)) return false;
  if (reading.sign == ErrorSign::Word) return true;
  const std::vector<double>& values = source_.GuessOf(value).values;
  if (errors.empty() || values.empty()) return false;
  if (std::ranges::any_of(errors, [](double error) { return error < 0; })) return false;
  if (reading.difference && AreStepsOf(values, errors)) return false;
  constexpr double kMost = 0.9;  // of a column of errors some may be huge
  return QuantileOf(errors, kMost) <= SizeOf(values);
}

bool ErrorPairs::IsBorneOut(const Pair& pair, const std::vector<Pair>& pairs) const {
  const auto is_alike = [&](const Pair& other) {
    return other.sign == pair.sign && other.column != pair.column;
  };
  if (pair.sign == ErrorSign::LetterOfLetter) return std::ranges::any_of(pairs, is_alike);
  if (pair.sign != ErrorSign::Function || pair.value != x_) return true;
  return std::ranges::any_of(
      pairs, [&](const Pair& other) { return is_alike(other) && other.value != x_; });
}

ErrorAxis ErrorPairs::AxisOf(std::int32_t column) const {
  if (ValueOf(column)) return ErrorAxis::None;
  const std::string name = source_.NameOf(column);
  for (const ErrorReading& reading : ReadAsError(name)) {
    if (reading.sign != ErrorSign::Word || IsCalled(reading.value)) continue;
    if (reading.value == "x") return ErrorAxis::X;
    if (reading.value == "y") return ErrorAxis::Y;
  }
  // Beside "ex" it is a component of a field or a strain.
  const bool behind_value =
      column > 0 && column - 1 != x_ && source_.GuessOf(column - 1).has_numbers;
  return name == "ey" && behind_value && !IsCalled("ex") ? ErrorAxis::Y : ErrorAxis::None;
}

}  // namespace tarnwick
