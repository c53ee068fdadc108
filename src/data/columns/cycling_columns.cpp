#include "data/columns/cycling_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <string_view>

#include "data/columns/row_identity.h"
#include "data/columns/value_order.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostRows = 20;  // that share an X
constexpr std::size_t kFewestX = 3;

/// For how many rows each X stands; 0 where that differs, or X turns back.
std::size_t RowsOfX(std::span<const double> x) {
  const auto behind = std::ranges::find_if(x, [&](double value) { return value != x.front(); });
  const auto rows = static_cast<std::size_t>(behind - x.begin());
  if (rows < 2 || rows > kMostRows || x.size() < kFewestX * rows) return 0;
  for (std::size_t i = 1; i < x.size(); ++i) {
    if ((x[i] == x[i - 1]) == (i % rows == 0)) return 0;
  }
  return IsMonotone({x.begin(), x.end()}) ? rows : 0;
}

bool Cycles(std::span<const double> values, std::size_t rows) {
  const auto first = values.first(rows);
  if (std::ranges::all_of(first, [&](double value) { return value == first.front(); }))
    return false;
  for (std::size_t i = rows; i < values.size(); ++i) {
    if (values[i] != values[i - rows]) return false;
  }
  return true;
}

std::span<const double> FirstValues(const ImportSource& source, std::int32_t column) {
  return source.GuessOf(column).Successive();
}

}  // namespace

std::vector<std::int32_t> FindCyclingColumns(const ImportSource& source, std::int32_t x) {
  if (x < 0 || FirstValues(source, x).empty()) return {};
  const std::span<const double> xs = FirstValues(source, x);
  const std::size_t rows = RowsOfX(xs);
  std::vector<std::int32_t> cycling;
  for (const std::int32_t column : source.NumberColumns()) {
    const std::span<const double> values = FirstValues(source, column);
    const bool whole = rows > 0 && column != x && values.size() == xs.size();
    if (whole && Cycles(values, rows)) cycling.push_back(column);
  }
  return cycling;
}

bool NumbersObjects(const ImportSource& source, std::int32_t x, std::int32_t column) {
  constexpr std::string_view kWords[] = {
      "num",   "number", "no",     "nr",       "id",      "ele",     "elem",     "element", "node",
      "probe", "cell",   "site",   "atom",     "station", "channel", "detector", "ch",      "chan",
      "track", "sensor", "object", "particle", "zone",    "group",   "groups"};
  const std::string name = source.NameOf(column);
  if (!NamesIdentity(name) && !HasWord(name, kWords)) return false;
  const std::span<const double> values = FirstValues(source, column);
  std::vector<double> numbers(values.begin(), values.end());
  numbers.resize(std::min(numbers.size(), RowsOfX(FirstValues(source, x))));
  std::ranges::sort(numbers);
  return !numbers.empty() && std::ranges::adjacent_find(numbers) == numbers.end() &&
         std::ranges::all_of(numbers, [](double value) { return value == std::floor(value); });
}

}  // namespace tarnwick
