#include "data/columns/missing_meaning.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "base/word_list.h"
#include "data/columns/import_options.h"
#include "data/columns/value_order.h"
#include "data/fields/declared_missing.h"
#include "data/fields/missing_values.h"
#include "data/fields/text_fields.h"
#include "data/fields/text_lines.h"
#include "data/text/pen_marks.h"

namespace tarnwick {
namespace {

/// The guesses' values are without those that stand for none.
void DropMissing(ImportSource& source) {
  const MissingValues missing(source.info.MissingValues);
  if (missing.Empty()) return;
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    ColumnGuess& column = source.columns[i];
    const auto is_missing = [&](double value) {
      return missing.MatchesNumber(value, static_cast<std::int32_t>(i));
    };
    const auto later = std::span(column.values).last(column.later_values);
    column.later_values -= static_cast<std::size_t>(std::ranges::count_if(later, is_missing));
    std::erase_if(column.values, is_missing);
  }
}

void AddMissing(std::span<const std::string> found, ImportSource& source) {
  if (found.empty()) return;
  source.info.MissingValues += (source.info.MissingValues.empty() ? "" : " ") + Joined(found, " ");
}

bool HoldsNumbers(const ColumnGuess& column) {
  return column.has_numbers && !column.is_date;
}

/// Values beside `value` lie on both sides of it: it is one of them.
bool LiesAmong(double value, const std::vector<double>& values) {
  return std::ranges::any_of(values, [&](double other) { return other < value; }) &&
         std::ranges::any_of(values, [&](double other) { return other > value; });
}

bool HasValue(double value, const ColumnGuess& column) {
  return HoldsNumbers(column) && std::ranges::find(column.values, value) != column.values.end();
}

/// The column has the value, and may have it as one of its own: a temperature of -9 beside lengths of which -9 tells none.
bool MayMeasure(double value, const ColumnGuess& column) {
  return HasValue(value, column) && LiesAmong(value, column.values);
}

/// 1 and 999, weights of two kinds of rows: beside one other value no positive number stands for none where all its rows follow
/// each other.
bool IsOneOfTwo(double value, const std::vector<double>& values) {
  const auto is_other = [=](double one) { return one != value; };
  const auto other = std::ranges::find_if(values, is_other);
  const auto first = std::ranges::find(values, value);
  if (value < 0 || other == values.end()) return false;
  const bool two =
      std::ranges::all_of(values, [&](double one) { return one == value || one == *other; });
  return two &&
         std::ranges::count(values, value) == std::find_if(first, values.end(), is_other) - first;
}

/// Several times in the column, and below all else there by a quarter of what the rest spans: what a scale ends at has values
/// beside.
bool LiesOftenBelow(double value, const ColumnGuess& column) {
  constexpr double kShare = 0.25;
  if (!HoldsNumbers(column) || std::ranges::count(column.values, value) < 2) return false;
  const OtherValues others = ValuesBut(column.values, value);
  return others.high > others.low && others.low - value > kShare * (others.high - others.low);
}

/// A code below zero ("-99") that no column has far enough from all else, but two at least have it below the rest and none
/// otherwise.
std::vector<std::string> FindSharedCodes(const ImportSource& source) {
  constexpr std::ptrdiff_t kFewestSharing = 2;
  constexpr double kCode = -99;
  std::vector<std::string> found;
  for (const ColumnGuess& column : source.columns) {
    if (!HoldsNumbers(column) || column.values.empty()) continue;
    const double value = std::ranges::min(column.values);
    if (value > kCode || !LooksMissing(value)) continue;
    const auto has = [=](const ColumnGuess& one) { return HasValue(value, one); };
    const auto lies_below = [=](const ColumnGuess& one) { return LiesOftenBelow(value, one); };
    const std::ptrdiff_t columns = std::ranges::count_if(source.columns, has);
    const bool shared =
        columns >= kFewestSharing && columns == std::ranges::count_if(source.columns, lies_below);
    std::string text = ShortestText(value);
    if (shared && std::ranges::find(found, text) == found.end()) found.push_back(std::move(text));
  }
  return found;
}

std::vector<std::string> FindInColumns(const ImportSource& source) {
  constexpr double kLargeEnough = 99;  // nobody measures it by chance
  const MissingValues known(source.info.MissingValues);
  std::vector<std::string> found;
  const auto is_measured = [&](double value) {
    return std::abs(value) < kLargeEnough &&
           std::ranges::any_of(source.columns, [&](const ColumnGuess& column) {
             return MayMeasure(value, column);
           });
  };
  for (const ColumnGuess& column : source.columns) {
    if (!HoldsNumbers(column)) continue;
    std::vector<double> values = column.values;
    std::erase_if(values, [&](double value) { return known.MatchesNumber(value); });
    for (std::string& text : SuggestMissing(values)) {
      const double value = ParseNumber(text).value_or(0);
      const bool measured = is_measured(value) || IsOneOfTwo(value, values);
      if (!measured && std::ranges::find(found, text) == found.end()) {
        found.push_back(std::move(text));
      }
    }
  }
  return found;
}

/// What the head declares, where it stands in the first rows at all and among no column's values.
std::vector<std::string> FindDeclared(std::string_view text, char line_end,
                                      const ImportSource& source) {
  constexpr std::size_t kBytesLookedAt = 1 << 20;
  constexpr double kTooSmallToMeasure = 1e-20;
  constexpr std::int32_t kMostLines = 1000;  // of a head
  const std::int32_t lines = std::clamp(source.info.FileHasHeaders, 0, kMostLines);
  const std::vector<std::string_view> head =
      FirstLines(text, static_cast<std::size_t>(lines), line_end);
  std::vector<std::string> declared = DeclaredMissing(head);
  if (declared.empty()) return declared;
  const std::size_t rows_at =
      head.empty()
          ? 0
          : static_cast<std::size_t>(head.back().data() - text.data()) + head.back().size();
  const std::string_view rows = text.substr(rows_at, kBytesLookedAt);
  const MissingValues all(Joined(declared, " "));
  std::erase_if(declared, [&](const std::string& missing) {
    const double value = ParseNumber(missing).value_or(0);
    const auto has = [&](const ColumnGuess& column) { return HasValue(value, column); };
    if (rows.find(missing) == rows.npos && std::ranges::none_of(source.columns, has)) return true;
    return std::abs(value) > kTooSmallToMeasure &&
           std::ranges::any_of(source.columns, [&](const ColumnGuess& column) {
             std::vector<double> others = column.values;
             std::erase_if(others, [&](double other) { return all.MatchesNumber(other); });
             return HoldsNumbers(column) && LiesAmong(value, others);
           });
  });
  return declared;
}

/// Numbers that stand for no value in single columns: where they may be values of others.
struct ColumnMissing {
  std::int32_t column;
  double value;
};

std::vector<std::size_t> PlacesOf(double value, const ColumnGuess& column) {
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < column.values.size(); ++i) {
    if (column.values[i] == value) places.push_back(i);
  }
  return places;
}

/// -1 comes more than once, and all else is not below zero.
bool MayLackBelowZero(const ColumnGuess& column) {
  if (!HoldsNumbers(column)) return false;
  const auto is_value = [](double value) { return value >= 0; };
  const auto values = std::ranges::count_if(column.values, is_value);
  const auto minus_ones = std::ranges::count(column.values, -1.0);
  return minus_ones > 1 && values > 0 && values + minus_ones == std::ssize(column.values);
}

/// -1 in the very rows in which another column has -1 as well, or its own number for no value: what counts and errors have where
/// nothing was counted.
void FindMinusOnes(const ImportSource& source, std::vector<ColumnMissing>& found) {
  std::vector<ColumnMissing> all = found;
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    if (MayLackBelowZero(source.columns[i])) all.push_back({static_cast<std::int32_t>(i), -1});
  }
  const std::size_t known = found.size();
  for (const ColumnMissing& one : std::span(all).subspan(known)) {
    const ColumnGuess& column = source.GuessOf(one.column);
    const std::vector<std::size_t> places = PlacesOf(one.value, column);
    const auto is_as = [&](const ColumnMissing& other) {
      const ColumnGuess& beside = source.GuessOf(other.column);
      return other.column != one.column && beside.values.size() == column.values.size() &&
             beside.values != column.values && PlacesOf(other.value, beside) == places;
    };
    if (std::ranges::any_of(all, is_as)) found.push_back(one);
  }
}

std::vector<ColumnMissing> FindInSingleColumns(const ImportSource& source) {
  const MissingValues known(source.info.MissingValues);
  std::vector<ColumnMissing> found;
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    if (!HoldsNumbers(source.columns[i])) continue;
    std::vector<double> values = source.columns[i].values;
    std::erase_if(values, [&](double value) { return known.MatchesNumber(value); });
    for (const double value : SuggestMissingOfColumn(values)) {
      if (!IsOneOfTwo(value, values)) found.push_back({static_cast<std::int32_t>(i), value});
    }
  }
  FindMinusOnes(source, found);
  return found;
}

/// "99 stands for no value in "WVHT", "DPD" and 3 more"; each number once.
void NoteOfColumns(std::span<const ColumnMissing> found, ImportSource& source) {
  std::vector<double> told;
  for (const ColumnMissing& one : found) {
    if (std::ranges::find(told, one.value) != told.end()) continue;
    told.push_back(one.value);
    std::vector<std::string> names;
    for (const ColumnMissing& other : found) {
      if (other.value == one.value) names.push_back(source.Quoted(other.column));
    }
    source.notes.push_back(ShortestText(one.value) + " stands for no value in " + Listed(names));
  }
}

/// Two or three columns of numbers and nothing else, of which the first turns back.
bool MayBeOutlines(const ImportSource& source) {
  const std::size_t columns = source.columns.size();
  return (columns == 2 || columns == 3) && std::ranges::all_of(source.columns, &HoldsNumbers) &&
         !IsMonotone(source.columns.front().values);
}

/// Beyond all values of all columns but themselves.
bool LieBeyond(std::span<const std::string> marks, const ImportSource& source) {
  std::vector<double> numbers;
  for (const std::string& mark : marks) numbers.push_back(ParseNumber(mark).value_or(0));
  return std::ranges::all_of(source.columns, [&numbers](const ColumnGuess& column) {
    std::vector<double> values = column.values;
    std::erase_if(values,
                  [&](double value) { return std::ranges::find(numbers, value) != numbers.end(); });
    if (values.empty()) return false;
    const auto ends = std::ranges::minmax(values);
    return std::ranges::all_of(numbers,
                               [&](double mark) { return mark < ends.min || mark > ends.max; });
  });
}

}  // namespace

void SettleMissingValues(const ImportOptions& options, std::string_view text, char line_end,
                         ImportSource& source) {
  if (!options.missing) {
    const std::vector<std::string> declared = FindDeclared(text, line_end, source);
    AddMissing(declared, source);
    if (!declared.empty()) {
      source.notes.push_back(Listed(declared) + (declared.size() == 1 ? " stands" : " stand") +
                             " for no value, as the head of the file says");
    }
    std::vector<std::string> found = FindInColumns(source);
    if (found.empty() && declared.empty()) found = FindSharedCodes(source);
    AddMissing(found, source);
    if (!found.empty()) {
      source.notes.push_back(Listed(found) + (found.size() == 1 ? " stands" : " stand") +
                             " for no value");
    }
    const std::vector<ColumnMissing> single = FindInSingleColumns(source);
    std::vector<std::string> entries;
    entries.reserve(single.size());
    for (const ColumnMissing& one : single) {
      entries.push_back(MissingInColumn(one.value, one.column));
    }
    AddMissing(entries, source);
    NoteOfColumns(single, source);
  }
  DropMissing(source);
}

void SettlePenMarks(const ImportOptions& options, std::string_view text, char line_end,
                    ImportSource& source) {
  if (options.missing || !MayBeOutlines(source)) return;
  std::vector<std::string> marks = FindPenMarks(text, TextLayout(source.info, line_end));
  if (marks.empty()) return;
  const MissingValues known(source.info.MissingValues);
  std::vector<std::string> others = marks;
  std::erase_if(others, [&](const std::string& mark) { return known.Matches(mark); });
  if (!LieBeyond(marks, source)) return;
  AddMissing(others, source);
  source.notes.push_back("rows of " + Listed(marks) + " part lines");
  DropMissing(source);
}

}  // namespace tarnwick
