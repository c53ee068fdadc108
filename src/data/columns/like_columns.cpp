#include "data/columns/like_columns.h"

#include <algorithm>
#include <cmath>

#include "base/text_encoding.h"
#include "data/columns/value_order.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewest = 3;
constexpr std::size_t kFewestRows = 8;
constexpr std::size_t kMany = 6;      // of so many some rise by chance
constexpr double kMostWider = 4;      // one range than another
constexpr double kLeastShared = 0.5;  // of the narrower range
constexpr double kLargestColour = 255;

struct Range {
  double low = 0;
  double high = 0;
  double Width() const { return high - low; }
};

Range RangeOf(std::span<const double> values) {
  const auto [low, high] = std::ranges::minmax(values);
  return {low, high};
}

bool GoTogether(const Range& one, const Range& other) {
  const double narrow = std::min(one.Width(), other.Width());
  const double wide = std::max(one.Width(), other.Width());
  const double shared = std::min(one.high, other.high) - std::max(one.low, other.low);
  return narrow > 0 && wide <= kMostWider * narrow && shared >= kLeastShared * narrow;
}

/// Whole numbers from 0 to 255, or shares of one.
bool IsColour(std::span<const double> values) {
  const Range range = RangeOf(values);
  const bool whole =
      std::ranges::all_of(values, [](double value) { return value == std::floor(value); });
  return range.low >= 0 && (range.high <= 1 || (whole && range.high <= kLargestColour));
}

/// Of two columns the first goes on along the rows and turns back again and again: no scatter has its points in such an order,
/// and a loop turns twice.
bool IsSeriesOfTwo(const ImportSource& source, std::span<const std::int32_t> columns) {
  constexpr std::size_t kFewestOfTwo = 50;
  constexpr double kLeastCorrelation = 0.7;
  constexpr std::size_t kPointsOfTurn = 20;  // cycles that are measured have more
  const ColumnGuess& first = source.GuessOf(columns.front());
  const bool named = source.NameOf(columns.front()) != UnnamedColumn(columns.front()) &&
                     LowerAscii(source.NameOf(columns.back())) != "y";
  return named && !first.is_date && first.Successive().size() >= kFewestOfTwo &&
         !IsMonotone(source.GuessOf(columns.back()).values) && IsInNoOrder(first.values) &&
         TurnsOften(first.Successive(), kPointsOfTurn) &&
         GoesOn(first.Successive(), kLeastCorrelation);
}

}  // namespace

bool AreSeries(const ImportSource& source, std::span<const std::int32_t> columns) {
  constexpr std::size_t kFewestOfSeries = 20;
  if (columns.size() == 2) return IsSeriesOfTwo(source, columns);
  if (columns.size() < kFewest || !TurnsOften(source.GuessOf(columns.front()).Successive())) {
    return false;
  }
  std::size_t go_on = 0;
  for (const std::int32_t column : columns) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (guess.is_date || guess.Successive().size() < kFewestOfSeries) return false;
    if (IsMonotone(guess.values)) return false;  // which the others were measured over
    go_on += GoesOn(guess.Successive()) ? 1 : 0;
  }
  return 3 * go_on >= 2 * columns.size();
}

bool AreAlike(const ImportSource& source, std::span<const std::int32_t> columns) {
  if (columns.size() < kFewest) return false;
  bool colours = columns.size() == kFewest;
  for (const std::int32_t column : columns) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (guess.is_date || guess.values.size() < kFewestRows) return false;
    colours = colours && IsColour(guess.values);
  }
  const std::vector<double>& first = source.GuessOf(columns.front()).values;
  const bool of_many = columns.size() >= kMany &&
                       !StepsEvenly(source.GuessOf(columns.front()).Successive()) &&
                       columns.front() != source.NumberColumns().front();
  const bool runs = IsMonotone(first) ||
                    (columns.front() == source.NumberColumns().front() && MostlyRunsOn(first));
  if (runs && !of_many) return false;
  if (colours) return true;
  const bool named = std::ranges::any_of(
      columns, [&](std::int32_t column) { return source.NameOf(column) != UnnamedColumn(column); });
  if (named && !IsInNoOrder(first) && !of_many) return false;
  const Range range = RangeOf(first);
  return std::ranges::all_of(columns, [&](std::int32_t column) {
    return GoTogether(range, RangeOf(source.GuessOf(column).values));
  });
}

bool ShareOneName(const ImportSource& source, std::span<const std::int32_t> columns) {
  if (columns.size() < 2 || IsMonotone(source.GuessOf(columns.front()).values)) return false;
  const std::string name = source.NameOf(columns.front());
  return std::ranges::all_of(columns,
                             [&](std::int32_t column) { return source.NameOf(column) == name; });
}

}  // namespace tarnwick
