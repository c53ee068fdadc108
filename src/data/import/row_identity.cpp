#include "data/import/row_identity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "data/import/argument_names.h"
#include "data/import/name_words.h"
#include "data/import/value_order.h"
#include "data/text/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestInBlocks = 8;

bool AreWhole(const std::vector<double>& values) {
  return std::ranges::all_of(values, [](double value) { return value == std::floor(value); });
}

/// No value is less than the one before it in the same block, and most are more.
bool RisesWithin(const std::vector<double>& values, const std::vector<double>& blocks) {
  if (values.size() != blocks.size()) return false;
  std::size_t steps = 0, rises = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (blocks[i] != blocks[i - 1]) continue;
    if (values[i] < values[i - 1]) return false;
    ++steps;
    rises += values[i] > values[i - 1] ? 1 : 0;
  }
  return rises > 0 && rises == steps;
}

/// Several rows that follow each other share a number of the column.
bool IdentifiesBlocks(const ImportSource& source, std::int32_t column) {
  const ColumnGuess& guess = source.GuessOf(column);
  return !guess.is_date && guess.values.size() >= kFewestInBlocks &&
         NamesIdentity(source.NameOf(column)) && AreWhole(guess.values) &&
         MostlyStands(guess.values) && !guess.IsConstant();
}

}  // namespace

bool NamesIdentity(std::string_view name) {
  constexpr std::string_view kNames[] = {
      "object",  "objid",   "objectid", "sourceid", "kic",  "epic",        "hip",
      "hd",      "star",    "uid",      "uuid",     "guid", "hash",        "barcode",
      "patient", "subject", "ptno",     "patno",    "subj", "participant", "animal"};
  const std::vector<std::string> words = WordsOf(name);
  if (words.empty()) return false;
  return words.back() == "id" ||
         (words.size() == 1 && std::ranges::find(kNames, words.front()) != std::end(kNames));
}

bool IdentifiesRows(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kFewest = 3;
  const ColumnGuess& guess = source.GuessOf(column);
  if (guess.is_date || guess.values.size() < kFewest || !NamesIdentity(source.NameOf(column))) {
    return false;
  }
  if (IsMonotone(guess.values)) return false;
  std::vector<double> values = guess.values;
  std::ranges::sort(values);
  return values.front() >= 0 && std::ranges::adjacent_find(values) == values.end() &&
         AreWhole(values);
}

bool LabelsRows(const ImportSource& source, std::int32_t column) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const ColumnGuess& guess = source.GuessOf(column);
  const std::span<const double> values = guess.Successive();
  if (column != 0 || guess.is_date || values.size() < kFewestInBlocks ||
      names.front() != UnnamedColumn(0) || !AreWhole(guess.values) || guess.values.front() < 0) {
    return false;
  }
  for (std::size_t i = 1; i < names.size(); ++i) {
    if (names[i] == UnnamedColumn(static_cast<std::int32_t>(i))) return false;
  }
  std::size_t ones = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] <= values[i - 1]) return false;
    ones += values[i] == values[i - 1] + 1 ? 1 : 0;
  }
  return 2 * ones > values.size() && ones + 1 < values.size();
}

std::optional<RowBlocks> FindRowBlocks(const ImportSource& source,
                                       std::span<const std::int32_t> numbers) {
  const auto identity = std::ranges::find_if(
      numbers, [&](std::int32_t column) { return IdentifiesBlocks(source, column); });
  if (identity == numbers.end()) return std::nullopt;
  const auto x = std::ranges::find_if(numbers, [&](std::int32_t column) {
    return column != *identity && !source.GuessOf(column).is_date &&
           NamesPeriod(source.NameOf(column)) &&
           RisesWithin(source.GuessOf(column).values, source.GuessOf(*identity).values);
  });
  if (x == numbers.end()) return std::nullopt;
  return RowBlocks{*identity, *x};
}

}  // namespace tarnwick
