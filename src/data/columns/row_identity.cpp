#include "data/columns/row_identity.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/ascii.h"
#include "data/columns/value_order.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestInBlocks = 8;

bool AreWhole(const std::vector<double>& values) {
  return std::ranges::all_of(values, [](double value) { return value == std::floor(value); });
}

/// Nearly always a value is more than the one before it in the same block.
bool RisesWithin(const std::vector<double>& values, const std::vector<double>& blocks) {
  constexpr std::size_t kMostOthers = 20;  // one step of so many
  if (values.size() != blocks.size()) return false;
  std::size_t steps = 0, rises = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (blocks[i] != blocks[i - 1]) continue;
    ++steps;
    rises += values[i] > values[i - 1] ? 1 : 0;
  }
  return rises > 0 && kMostOthers * (steps - rises) <= steps;
}

/// Several rows that follow each other share a number of the column.
bool IdentifiesBlocks(const ImportSource& source, std::int32_t column) {
  const ColumnGuess& guess = source.GuessOf(column);
  return !guess.is_date && guess.values.size() >= kFewestInBlocks &&
         NamesIdentity(source.NameOf(column)) && AreWhole(guess.values) &&
         MostlyStands(guess.values) && !guess.IsConstant();
}

bool AreDifferent(std::vector<double> values) {
  std::ranges::sort(values);
  return std::ranges::adjacent_find(values) == values.end();
}

/// A few numbers, each of them many times, in no order: what persons answered.
bool AreAnswers(const std::vector<double>& values) {
  constexpr std::size_t kMost = 10, kTimes = 5;
  if (!IsInNoOrder(values)) return false;
  const std::size_t different = CountDifferent(values, kMost);
  return different <= kMost && kTimes * different <= values.size();
}

/// Another column rises throughout and is called as what others are measured over.
bool RisesBehind(const ImportSource& source, std::int32_t column) {
  return std::ranges::any_of(source.NumberColumns(), [&](std::int32_t other) {
    return other > column && NamesArgument(source.NameOf(other)) &&
           IsMonotone(source.GuessOf(other).values) && AreDifferent(source.GuessOf(other).values);
  });
}

/// "SubjectID", "studyId"; "grid" and "fluid" are words.
bool EndsInId(std::string_view name) {
  constexpr std::size_t kShortest = 3;
  if (name.size() < kShortest || !IsLetter(name[name.size() - kShortest])) return false;
  const bool lower_before = name[name.size() - kShortest] >= 'a';
  return (name.ends_with("ID") && lower_before) || (name.ends_with("Id") && lower_before);
}

}  // namespace

bool NamesIdentity(std::string_view name) {
  constexpr std::string_view kNames[] = {
      "object",  "objid",   "objectid", "sourceid", "kic",  "epic",        "hip",
      "hd",      "star",    "uid",      "uuid",     "guid", "hash",        "barcode",
      "patient", "subject", "ptno",     "patno",    "subj", "participant", "animal",
      "pid",     "subjid",  "patid",    "personid", "idno", "idnum",       "idnr"};
  const std::vector<std::string> words = WordsOf(name);
  if (words.empty()) return false;
  return words.back() == "id" || EndsInId(name) ||
         (words.size() == 1 && std::ranges::find(kNames, words.front()) != std::end(kNames));
}

bool IdentifiesRows(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kFewest = 3;
  const ColumnGuess& guess = source.GuessOf(column);
  return !guess.is_date && guess.values.size() >= kFewest && NamesIdentity(source.NameOf(column)) &&
         !guess.IsConstant() && AreWhole(guess.values) && std::ranges::min(guess.values) >= 0 &&
         !AreAnswers(guess.values);
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
  if (!IsMonotone(guess.values)) return AreDifferent(guess.values);
  std::size_t ones = 0;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] <= values[i - 1]) return false;
    ones += values[i] == values[i - 1] + 1 ? 1 : 0;
  }
  const bool few_left_out = 2 * ones > values.size() && ones + 1 < values.size();
  return few_left_out || (!StepsEvenly(values) && RisesBehind(source, column));
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
