#include "data/import/x_choice.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/import/argument_names.h"
#include "data/import/error_names.h"
#include "data/import/like_columns.h"
#include "data/import/name_words.h"
#include "data/import/row_identity.h"
#include "data/import/value_order.h"
#include "data/import/x_evidence.h"
#include "data/text/field_kind.h"
#include "data/text/number_names.h"
#include "data/text/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestInOrder = 8;
constexpr std::size_t kFewColumns = 4;  // of many some rise by chance

using Columns = std::vector<std::int32_t>;

/// True when some column has a name of its own.
bool HasNames(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (names[i] != UnnamedColumn(static_cast<std::int32_t>(i))) return true;
  }
  return false;
}

/// A count of rows is what its name says, or what has none in a table where others have: anything else that rises by 1
/// may be what was stepped through.
bool NamesCount(const ImportSource& source, std::int32_t column) {
  constexpr std::string_view kWords[] = {"index",   "idx",   "id",     "no",      "nr",   "num",
                                         "number",  "row",   "rows",   "obs",     "case", "pt",
                                         "pts",     "point", "points", "record",  "seq",  "sample",
                                         "unnamed", "n",     "i",      "rownames"};
  const std::string name = source.NameOf(column);
  if (name.ends_with('#')) return true;
  const bool unnamed = name == UnnamedColumn(column) || WordsOf(name).empty();
  return unnamed ? HasNames(source) : HasWord(name, kWords);
}

bool RisesThroughout(const std::vector<double>& values) {
  return values.size() > 2 && IsMonotone(values) &&
         std::ranges::adjacent_find(values) == values.end();
}

/// "RECORD" 1000, 1001, 1002 of a logger that was read out before.
bool GoesOnCounting(const ImportSource& source, std::int32_t column) {
  constexpr std::string_view kWords[] = {"record", "recnum", "recno", "seq", "sequence"};
  const ColumnGuess& guess = source.GuessOf(column);
  const std::span<const double> values = guess.Successive();
  return !guess.is_date && values.size() >= kFewestInOrder &&
         HasWord(source.NameOf(column), kWords) &&
         std::ranges::adjacent_find(
             values, [](double one, double next) { return next != one + 1; }) == values.end();
}

/// "1 0.01 573.15": what steps evenly behind it, as nothing else does, was stepped through; without names what rises or falls
/// in every row was. A count from 0 may be a time, but for one without a unit before others with theirs.
bool StandsBeforeSteps(const ImportSource& source, std::int32_t column) {
  const Columns numbers = source.NumberColumns();
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
  if (!HasNames(source) && RisesThroughout(source.GuessOf(numbers[1]).values)) {
    return !steps(numbers[1]) || std::ranges::none_of(std::span(numbers).subspan(2), steps);
  }
  return steps(numbers[1]) && std::ranges::none_of(std::span(numbers).subspan(2), steps);
}

/// The first column holds texts, another one in each row: the rows are labelled.
bool HasRowLabels(const ImportSource& source) {
  constexpr std::size_t kFewest = 3;
  if (source.samples.empty() || source.columns.front().has_numbers) return false;
  std::vector<std::string> labels = source.samples.front();
  if (labels.size() < kFewest || std::ranges::find(labels, "") != labels.end()) return false;
  std::ranges::sort(labels);
  return std::ranges::adjacent_find(labels) == labels.end();
}

/// The first column is called like an X and holds nothing: the rows are even steps of it.
bool LeavesOutX(const ImportSource& source) {
  if (source.samples.empty() || source.samples.front().empty()) return false;
  const std::string name = source.NameOf(0);
  return (NamesScan(name) || NamesTime(name)) &&
         std::ranges::all_of(source.samples.front(), &std::string::empty);
}

}  // namespace

bool CountsRows(const ImportSource& source, std::int32_t column) {
  return (source.GuessOf(column).CountsRows() &&
          (NamesCount(source, column) || StandsBeforeSteps(source, column))) ||
         GoesOnCounting(source, column) || LabelsRows(source, column);
}

namespace {

/// "8336", "8337", "8315" over what was counted there.
bool AreCalledByNumbers(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto numbers = std::ranges::count_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Number; });
  return numbers > 2 && 2 * numbers > std::ssize(names);
}

}  // namespace

bool HoldsSeriesInRows(const ImportSource& source) {
  constexpr std::size_t kFewest = 3;
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto dated = static_cast<std::size_t>(std::ranges::count_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Date; }));
  if (dated >= kFewest && 2 * dated > names.size()) return true;
  const auto first_number = std::ranges::find_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Number; });
  if (first_number == names.begin() || !HasRowLabels(source)) return false;
  return AreNumbersAcross(std::span(first_number - 1, names.end()));
}

namespace {

/// The first column rises in every row, and is no time at which a sweep further on was taken: that may be what the sweep became.
bool LeadsByItself(const ImportSource& source, const Columns& varying, std::int32_t scan) {
  const std::vector<double>& values = source.GuessOf(varying.front()).values;
  return varying.front() != scan && varying.front() == source.NumberColumns().front() &&
         values.size() >= kFewestInOrder && RisesThroughout(values) &&
         !NamesTime(source.NameOf(varying.front()));
}

/// Amino acids over the rows of a matrix: "A R N D … X".
bool IsOneLetterOfMany(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kMany = 8;
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto letters =
      std::ranges::count_if(names, [](const std::string& name) { return name.size() == 1; });
  return names.size() >= kMany && 4 * static_cast<std::size_t>(letters) >= 3 * names.size() &&
         !IsMonotone(source.GuessOf(column).values);
}

/// "y", "y2": no "year".
bool IsCalledY(std::string_view name) {
  const std::string lower = LowerAscii(name);
  return lower.starts_with('y') && (lower.size() == 1 || !IsLetter(lower[1]));
}

/// "chr pos N X", "year C P X": what is called X and stands in no order is none where a column ahead of it rises and nothing is
/// called Y.
bool IsCountedBesideX(const ImportSource& source, std::int32_t x) {
  const Columns numbers = source.NumberColumns();
  const auto is_y = [&](std::int32_t column) { return IsCalledY(source.NameOf(column)); };
  const auto rises_ahead = [&](std::int32_t column) {
    return column < x && RisesThroughout(source.GuessOf(column).values) &&
           (NamesTime(source.NameOf(column)) || !source.GuessOf(column).CountsRows());
  };
  return !IsMonotone(source.GuessOf(x).values) && std::ranges::none_of(numbers, is_y) &&
         std::ranges::any_of(numbers, rises_ahead);
}

/// Beside an "x" in no order dates are what it was measured over.
bool GivesWayToDates(const ImportSource& source, std::int32_t x) {
  const Columns numbers = source.NumberColumns();
  return numbers.size() == 2 && IsInNoOrder(source.GuessOf(x).values) &&
         std::ranges::any_of(numbers, [&](std::int32_t column) {
           return source.GuessOf(column).is_date && !source.GuessOf(column).IsConstant();
         });
}

/// Ahead of all others "sigma" is a stress and "se" how sensitive a test is.
bool MayGiveErrors(const ImportSource& source, std::int32_t column) {
  const std::string name = source.NameOf(column);
  return NamesErrors(name) &&
         !(NamesDoubtfulErrors(name) && column == source.NumberColumns().front());
}

}  // namespace

bool IsXForWantOfBetter(const ImportSource& source, std::int32_t column) {
  constexpr std::size_t kFewestColumns = 3;  // of two the first is X
  if (column < 0 || source.columns.size() < kFewestColumns) return false;
  const ColumnGuess& guess = source.GuessOf(column);
  const std::string name = source.NameOf(column);
  if (guess.is_date || NamesArgument(name) || CountsRows(source, column)) return false;
  return (IsInNoOrder(guess.values) && !RunsAnew(guess.values)) || HasTwoValues(guess.values) ||
         HasFewWholeValues(guess.values) || NamesIdentity(name);
}

std::optional<std::int32_t> RivalOfX(const ImportSource& source, std::int32_t x) {
  if (x < 0 || x == kRowNumberColumn || source.GuessOf(x).is_date ||
      LowerAscii(source.NameOf(x)) == "x") {
    return std::nullopt;
  }
  const bool scans = NamesScan(source.NameOf(x));
  const bool nameless = source.NameOf(x) == UnnamedColumn(x);
  for (const std::int32_t column : source.NumberColumns()) {
    const std::string name = source.NameOf(column);
    const bool may_be =
        column < x || (column > x && !scans && NamesScan(name)) || (nameless && NamesTime(name));
    const ColumnGuess& guess = source.GuessOf(column);
    if (may_be && guess.values.size() >= kFewestInOrder && RisesThroughout(guess.values) &&
        !CountsRows(source, column) && !IdentifiesRows(source, column) && !guess.CountsRows() &&
        !NamesErrors(name)) {
      return column;
    }
  }
  return std::nullopt;
}

bool HoldsUnreadDays(const ImportSource& source, std::int32_t column) {
  constexpr double kShortestDay = 1e7;  // as a number
  if (column < 0) return false;
  const ColumnGuess& guess = source.GuessOf(column);
  const auto is_long = [](double value) {
    return value >= kShortestDay && value == std::floor(value);
  };
  return !guess.is_date && NamesTime(source.NameOf(column)) && !guess.values.empty() &&
         std::ranges::all_of(guess.values, is_long);
}

namespace {

/// The columns that go on from row to row and are no errors.
Columns VaryingColumns(const ImportSource& source, const Columns& numbers) {
  Columns columns;
  for (const std::int32_t column : numbers) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (guess.IsConstant() || guess.only_ahead || MayGiveErrors(source, column) ||
        CountsRows(source, column) || IdentifiesRows(source, column)) {
      continue;
    }
    columns.push_back(column);
  }
  return columns;
}

/// Those of them that may be X, a dose of two values behind what varies more.
Columns MayBeX(const ImportSource& source, Columns columns) {
  std::erase_if(columns, [&](std::int32_t column) { return SpeaksAgainstX(source, column); });
  if (columns.size() > 2 && HasNames(source)) {
    std::stable_partition(columns.begin(), columns.end(), [&](std::int32_t column) {
      return !HasTwoValues(source.GuessOf(column).values);
    });
  }
  return columns;
}

std::int32_t ChooseAmong(const ImportSource& source, const Columns& numbers) {
  if (LeavesOutX(source)) return kRowNumberColumn;
  const auto named = std::ranges::find_if(numbers, [&](std::int32_t column) {
    return LowerAscii(source.NameOf(column)) == "x" && !source.GuessOf(column).IsConstant();
  });
  if (named != numbers.end() && !IsOneLetterOfMany(source, *named) &&
      !IsCountedBesideX(source, *named) && !GivesWayToDates(source, *named)) {
    return *named;
  }
  if (const auto blocks = FindRowBlocks(source, numbers)) return blocks->x;
  Columns counts;
  for (const std::int32_t column : numbers) {
    if (CountsRows(source, column)) counts.push_back(column);
  }
  const Columns together = VaryingColumns(source, numbers);
  const Columns varying = MayBeX(source, together);
  const auto first = [&](auto is) {
    const auto found = std::ranges::find_if(varying, is);
    return found == varying.end() ? kRowNumberColumn : *found;
  };
  const auto rises = [&](std::int32_t column) { return IsMonotone(source.GuessOf(column).values); };
  const std::int32_t rising = first(rises);
  const std::int32_t date = first([&](std::int32_t column) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (!guess.is_date) return false;
    // How long each lap took is no time to plot laps over.
    const bool lasts = std::ranges::all_of(guess.values, [](double day) { return day < 1; });
    // Nor is a date of each row that stands far behind other columns, in no order.
    const bool aside = column > numbers.front() && IsInNoOrder(guess.values) && varying.size() > 2;
    return !aside && (rising == kRowNumberColumn || !lasts || !IsInNoOrder(guess.values));
  });
  if (date != kRowNumberColumn) return date;
  const std::int32_t scan =
      first([&](std::int32_t column) { return NamesScan(source.NameOf(column)) && rises(column); });
  if (scan != kRowNumberColumn)
    return LeadsByItself(source, varying, scan) ? varying.front() : scan;
  if (varying.empty()) return counts.empty() ? kRowNumberColumn : counts.front();
  if (varying.size() == 1 && !counts.empty()) return counts.front();
  const auto names_argument = [&](std::int32_t column) {
    return NamesArgument(source.NameOf(column));
  };
  // A time or the like stands beside codes, which may be drawn over it.
  const bool over_codes =
      numbers.size() > 2 && rising == varying.front() && names_argument(varying.front());
  if (varying.size() == 1 && varying.front() != numbers.front() && !over_codes) {
    return kRowNumberColumn;
  }
  if (std::ranges::none_of(varying, names_argument) &&
      (AreAlike(source, together) || AreSeries(source, together) || AreItems(source, together))) {
    return kRowNumberColumn;
  }
  // One time stands for all rows, and what was measured then may turn back as it will.
  const bool time_stands = std::ranges::any_of(numbers, [&](std::int32_t column) {
    return source.GuessOf(column).is_date && source.GuessOf(column).IsConstant();
  });
  if (time_stands && rising == kRowNumberColumn && std::ranges::none_of(varying, names_argument)) {
    return kRowNumberColumn;
  }
  const std::int32_t time = first([&](std::int32_t column) {
    return NamesTime(source.NameOf(column)) && rises(column) &&
           !MostlyStands(source.GuessOf(column).values);
  });
  // A cycle or step that stands for many rows gives way to the time that runs.
  const bool counts_steps =
      time != kRowNumberColumn && MostlyStands(source.GuessOf(varying.front()).values);
  const bool labelled = HasRowLabels(source);
  // Rows may have been put in the order of what was found: what rises in even steps or is called so is more.
  const std::int32_t ordered = first([&](std::int32_t column) {
    const std::vector<double>& values = source.GuessOf(column).values;
    return values.size() >= kFewestInOrder && RisesThroughout(values) &&
           values.size() >= source.GuessOf(varying.front()).values.size() &&
           ((varying.size() <= kFewColumns &&
             StepsEvenly(source.GuessOf(column).Successive(), Evenness::AsWritten) &&
             !source.GuessOf(column).CountsRows()) ||
            NamesArgument(source.NameOf(column)));
  });
  const bool in_order = ordered != kRowNumberColumn && !labelled &&
                        IsInNoOrder(source.GuessOf(varying.front()).values);
  const bool numbered = counts.size() == 1 && counts.front() == numbers.front() &&
                        source.NameOf(numbers.front()) == UnnamedColumn(numbers.front());
  if (numbered && AreCalledByNumbers(source)) return counts.front();
  if (HoldsSeriesInRows(source) && (labelled || !rises(varying.front()))) return kRowNumberColumn;
  const auto is_argument = [&](std::int32_t column) {
    return NamesArgument(source.NameOf(column)) || StepsEvenly(source.GuessOf(column).Successive());
  };
  // Labelled rows may as well be in the order of what was found.
  const bool first_rises =
      rises(varying.front()) && (!labelled || is_argument(varying.front())) && !counts_steps;
  const std::int32_t anew = first([&](std::int32_t column) {
    return NamesArgument(source.NameOf(column)) && RunsAnew(source.GuessOf(column).values);
  });
  const bool stands = MostlyStands(source.GuessOf(varying.front()).values);
  if (first_rises && (anew == kRowNumberColumn || !stands)) return varying.front();
  if (time != kRowNumberColumn) return time;
  if (in_order) return ordered;
  if (anew != kRowNumberColumn) return anew;
  if (!labelled) return varying.front();
  return first(
      [&](std::int32_t column) { return rises(column) && NamesArgument(source.NameOf(column)); });
}

}  // namespace

std::int32_t ChooseX(const ImportSource& source, const Columns& numbers) {
  const std::int32_t x = ChooseAmong(source, numbers);
  // Labels of rows say that these are cases, which stand side by side unless a time or the like tells when.
  const bool labelled = !numbers.empty() && LabelsRows(source, numbers.front());
  const bool tells = x >= 0 && (source.GuessOf(x).is_date || NamesArgument(source.NameOf(x)));
  return labelled && !tells ? kRowNumberColumn : x;
}

}  // namespace tarnwick
