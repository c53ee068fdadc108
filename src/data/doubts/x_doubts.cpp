#include "data/doubts/x_doubts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/day_number.h"
#include "base/number_text.h"
#include "data/columns/counted_rows.h"
#include "data/columns/error_names.h"
#include "data/columns/row_identity.h"
#include "data/columns/value_order.h"
#include "data/columns/x_choice.h"
#include "data/doubts/days_in_digits.h"
#include "data/names/argument_names.h"
#include "data/names/text_names.h"
#include "data/series/data_series.h"

namespace tarnwick {
namespace {

bool IsColumn(const ReadColumns& read, std::int32_t column) {
  return column >= 0 && static_cast<std::size_t>(column) < read.source.columns.size();
}

/// X are days, in one column or joined from several.
bool IsDated(const ReadColumns& read) {
  const std::int32_t x = read.chosen.x;
  return x == kJoinedTimeColumn || (IsColumn(read, x) && read.source.GuessOf(x).is_date);
}

/// What rises or falls in every row, and neither counts nor labels the rows.
bool MayBeX(const ImportSource& source, std::int32_t column) {
  const ColumnGuess& guess = source.GuessOf(column);
  return RisesBeyondChance(guess.values) && !guess.CountsRows() && !CountsRows(source, column) &&
         !IdentifiesRows(source, column) && !NamesErrors(source.NameOf(column));
}

bool StepsAsWritten(const ColumnGuess& guess) {
  constexpr std::size_t kFewest = 8;
  const std::span<const double> values = guess.Successive();
  return values.size() >= kFewest && StepsEvenly(values, Evenness::AsWritten);
}

struct OtherX {
  std::int32_t column = 0;
  const char* why = "";
};

/// The first that may be X as this one may not.
std::optional<OtherX> BetterX(const ReadColumns& read, std::int32_t x) {
  const ImportSource& source = read.source;
  const ColumnGuess& guess = source.GuessOf(x);
  const bool is_column = IsColumn(read, x);
  const bool rises = is_column && RisesThroughout(guess.values);
  const bool called = is_column && NamesArgument(source.NameOf(x));
  // A count from 0 may be a time.
  const bool counts = !is_column || (guess.CountsRows() && guess.values.front() == 1);
  const std::vector<std::int32_t> numbers = source.NumberColumns();
  const auto may_be_x = [&](std::int32_t column) { return MayBeX(source, column); };
  for (const std::int32_t column : numbers) {
    if (column == x || !may_be_x(column)) continue;
    const ColumnGuess& other = source.GuessOf(column);
    const std::string name = source.NameOf(column);
    const bool as_many = other.values.size() >= guess.values.size();
    if (!rises && as_many && (!called || NamesArgument(name))) {
      const bool alone = std::ranges::count_if(numbers, may_be_x) == 1;
      // Several that rise beside counted rows stand side by side.
      if (!alone && !is_column) return std::nullopt;
      return OtherX{column, alone ? " alone rises in every row" : " rises in every row"};
    }
    if (called || !as_many) continue;
    if (NamesTime(name) || NamesScan(name)) return OtherX{column, " rises as well"};
    const bool of_two = numbers.size() == 2;  // the first is X
    if (!of_two && (counts || !StepsAsWritten(guess)) && StepsAsWritten(other)) {
      return OtherX{column, counts ? " goes in even steps as well" : " alone goes in even steps"};
    }
  }
  return std::nullopt;
}

std::string WhatIsX(const ReadColumns& read, std::int32_t x) {
  return IsColumn(read, x) ? read.source.Quoted(x) + " is taken as X" : "the rows are counted";
}

/// X and the column, without names, begin groups of equally many, two at least: beginnings and ends of intervals stand side by
/// side, and names would tell.
bool BeginsGroup(const ImportSource& source, std::int32_t x, std::int32_t column) {
  if (source.NameOf(x) != UnnamedColumn(x) || source.NameOf(column) != UnnamedColumn(column)) {
    return false;
  }
  const std::int32_t size = column - x;
  return size > 1 && (static_cast<std::int32_t>(source.columns.size()) - x) % size == 0;
}

/// Both rise (or fall) in every row, over one range, in the same even steps, or the one goes on where the other ends.
bool GoesAsX(const ImportSource& source, std::int32_t x, std::int32_t column) {
  constexpr double kStepsAlike = 0.01, kEndsAlike = 0.1, kFewSteps = 3;
  const ColumnGuess& one = source.GuessOf(x);
  const ColumnGuess& other = source.GuessOf(column);
  if (!MayBeX(source, x) || !MayBeX(source, column)) return false;
  const double range = one.values.back() - one.values.front();
  const double begin = other.values.front() - one.values.front();
  const double end = other.values.back() - one.values.back();
  const double wide = std::abs(range);
  if (std::abs(begin) <= kEndsAlike * wide && std::abs(end) <= kEndsAlike * wide) return true;
  const double behind = (other.values.front() - one.values.back()) * (range > 0 ? 1 : -1);
  const double step = wide / static_cast<double>(one.values.size() - 1);
  if (behind > 0 && behind < kFewSteps * step) return true;
  const auto first_step = [](const ColumnGuess& guess) {
    return guess.values[1] - guess.values[0];
  };
  return StepsAsWritten(one) && StepsAsWritten(other) &&
         std::abs(first_step(one) - first_step(other)) <= kStepsAlike * std::abs(first_step(one));
}

/// The years of the least and the greatest X, which are days.
std::pair<int, int> YearsOf(const TDataSeries& series) {
  const Extremes extremes = series.GetExtremes();
  return {SplitDay(extremes.x_min).year, SplitDay(extremes.x_max).year};
}

bool HoldsText(const ImportSource& source, const std::string& text) {
  const auto holds = [&](std::string_view field) { return field.find(text) != field.npos; };
  return std::ranges::any_of(
      source.samples, [&](const auto& fields) { return std::ranges::any_of(fields, holds); });
}

}  // namespace

void DoubtX(const ReadColumns& read, Doubts& doubts) {
  const ImportSource& source = read.source;
  const std::int32_t x = read.chosen.x;
  const bool lone = read.chosen.y.size() == 1 && !IsColumn(read, x);
  if (IsDated(read) || lone || !read.chosen.own_x.empty()) return;
  if (IsColumn(read, x) && (IsXForWantOfBetter(source, x) || RivalOfX(source, x))) return;
  if (const std::optional<OtherX> other = BetterX(read, x)) {
    doubts.push_back({DoubtAbout::X, WhatIsX(read, x) + ", though " + source.Quoted(other->column) +
                                         other->why + " (--x names another)"});
  }
}

void DoubtDigitsOfX(const ReadColumns& read, Doubts& doubts) {
  const ImportSource& source = read.source;
  const std::int32_t x = read.chosen.x;
  if (!IsColumn(read, x) || source.GuessOf(x).is_date || HoldsUnreadDays(source, x)) return;
  const auto at = static_cast<std::size_t>(x);
  if (at >= source.samples.size()) return;
  const std::string_view way = DaysInDigits(source.GuessOf(x).values, source.samples[at]);
  if (way.empty()) return;
  doubts.push_back({DoubtAbout::X, source.Quoted(x) + " is read as numbers, though all may be " +
                                       std::string(way) + " (" +
                                       ShortestText(source.GuessOf(x).values.front()) + ")"});
}

void DoubtCentury(const ReadColumns& read, Doubts& doubts) {
  constexpr int kFirstDoubted = 2050, kLastOfShort = 2068;  // 69 is 1969
  const ImportSource& source = read.source;
  if (!IsDated(read) || read.series.empty() || read.series.front()->PointCount() == 0) return;
  const auto [low, high] = YearsOf(*read.series.front());
  if (high < kFirstDoubted || high > kLastOfShort) return;
  if (HoldsText(source, std::to_string(high))) return;
  const bool all = low >= kFirstDoubted;
  doubts.push_back(
      {DoubtAbout::X, "years of two digits are read as " +
                          std::string(all ? std::to_string(low) + " to " : "those up to ") +
                          std::to_string(high) +
                          (all ? " (--x-expr \"x - 36525\" has them a century earlier)" : "")});
}

void DoubtOneX(const ReadColumns& read, Doubts& doubts) {
  const ImportSource& source = read.source;
  const std::int32_t x = read.chosen.x;
  if (!IsColumn(read, x) || !read.chosen.own_x.empty()) return;
  for (const std::int32_t column : read.chosen.y) {
    const bool called = source.NameOf(column) == source.NameOf(x);
    if (!called && !(BeginsGroup(source, x, column) && GoesAsX(source, x, column))) continue;
    const std::string place = '#' + std::to_string(column);
    doubts.push_back({DoubtAbout::X, "column " + place + (called ? " is called " : " goes like ") +
                                         source.Quoted(x) + (called ? ", too" : "") +
                                         ": it may be the X of the columns behind it"});
    return;
  }
}

}  // namespace tarnwick
