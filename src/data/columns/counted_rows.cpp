#include "data/columns/counted_rows.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text_encoding.h"
#include "data/columns/row_identity.h"
#include "data/columns/value_order.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/names/text_names.h"

namespace tarnwick {

bool HasNamedColumns(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] != UnnamedColumn(static_cast<std::int32_t>(i))) return true;
  }
  return false;
}

namespace {

constexpr std::size_t kFewestCounted = 8;

/// The words of a row name its numbers: "0 TAO, value: 2.5, residual: 144". Its first number is what was stepped through.
bool IsNamedByRows(const ImportSource& source) {
  return source.info.NamesLine > source.info.FileHasHeaders;
}

/// A count of rows is what its name says, or what has none in a table where others have or which alone stands in quotes, as names
/// of rows do: anything else that rises by 1 may be what was stepped through.
bool NamesCount(const ImportSource& source, std::int32_t column) {
  constexpr std::string_view kWords[] = {"index",   "idx",   "id",     "no",      "nr",   "num",
                                         "number",  "row",   "rows",   "obs",     "case", "pt",
                                         "pts",     "point", "points", "record",  "seq",  "sample",
                                         "unnamed", "n",     "i",      "rownames"};
  const std::string name = source.NameOf(column);
  if (name.ends_with('#')) return true;
  const bool unnamed = name == UnnamedColumn(column) || WordsOf(name).empty();
  const bool named_by_count = HasNamedColumns(source) || source.GuessOf(column).is_quoted;
  return unnamed ? named_by_count && !IsNamedByRows(source) : HasWord(name, kWords);
}

/// "RECORD" 1000, 1001, 1002 of a logger that was read out before.
bool GoesOnCounting(const ImportSource& source, std::int32_t column) {
  constexpr std::string_view kWords[] = {"record", "recnum", "recno", "seq", "sequence"};
  const ColumnGuess& guess = source.GuessOf(column);
  const std::span<const double> values = guess.Successive();
  return !guess.is_date && values.size() >= kFewestCounted &&
         HasWord(source.NameOf(column), kWords) &&
         std::ranges::adjacent_find(
             values, [](double one, double next) { return next != one + 1; }) == values.end();
}

/// "1 0.01 573.15": what steps evenly behind it, as nothing else does, was stepped through; without names what rises or falls
/// in every row was. A count from 0 may be a time, but for one without a unit before others with theirs.
bool StandsBeforeSteps(const ImportSource& source, std::int32_t column) {
  const std::vector<std::int32_t> numbers = source.NumberColumns();
  if (numbers.size() < 3 || column != numbers.front() || NamesArgument(source.NameOf(column))) {
    return false;
  }
  const auto has_unit = [&](std::int32_t other) { return source.NameOf(other).ends_with(']'); };
  const auto units = static_cast<std::size_t>(std::ranges::count_if(numbers, has_unit));
  if (units + 1 == numbers.size() && !has_unit(column)) {
    return RisesThroughout(source.GuessOf(numbers[1]).values);
  }
  if (source.GuessOf(column).values.front() != 1) return false;
  if (LowerAscii(source.NameOf(column)) == "reading") {
    return RisesThroughout(source.GuessOf(numbers[1]).values);
  }
  const auto steps = [&](std::int32_t other) {
    return StepsEvenly(source.GuessOf(other).Successive(), Evenness::AsWritten);
  };
  if (!HasNamedColumns(source) && RisesThroughout(source.GuessOf(numbers[1]).values)) {
    return !steps(numbers[1]) || std::ranges::none_of(std::span(numbers).subspan(2), steps);
  }
  return steps(numbers[1]) && std::ranges::none_of(std::span(numbers).subspan(2), steps);
}

}  // namespace

bool CountsRows(const ImportSource& source, std::int32_t column) {
  return (source.GuessOf(column).CountsRows() &&
          (NamesCount(source, column) || StandsBeforeSteps(source, column))) ||
         GoesOnCounting(source, column) || LabelsRows(source, column);
}

}  // namespace tarnwick
