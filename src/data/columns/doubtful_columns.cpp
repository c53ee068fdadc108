#include "data/columns/doubtful_columns.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/number_text.h"
#include "base/text_encoding.h"
#include "base/word_list.h"
#include "data/columns/import_options.h"
#include "data/columns/sign_columns.h"
#include "data/columns/value_order.h"
#include "data/columns/x_choice.h"
#include "data/fields/factor_text.h"
#include "data/fields/si_unit.h"

namespace tarnwick {
namespace {

using Columns = std::vector<std::int32_t>;
using Notes = std::vector<std::string>;

Columns GuessedColumns(const ImportOptions& options, const ChosenColumns& columns) {
  Columns guessed;
  const auto add = [&guessed](std::int32_t column) {
    if (std::ranges::find(guessed, column) == guessed.end()) guessed.push_back(column);
  };
  for (std::size_t i = 0; i < columns.y.size() && !options.x_format; ++i) add(columns.XOf(i));
  for (std::size_t i = 0; i < columns.y.size() && !options.y_format; ++i) add(columns.y[i]);
  return guessed;
}

/// A column whose commas can be nothing but the mark of decimals speaks for all.
void TellOfCommas(const ImportSource& source, const Columns& guessed, Notes& notes) {
  const auto decides = [](const ColumnGuess& column) {
    return column.format == ColumnFormat::DecimalComma && !column.commas_open;
  };
  if (std::ranges::any_of(source.columns, decides)) return;
  std::vector<std::string> open;
  for (const std::int32_t column : guessed) {
    if (source.GuessOf(column).commas_open) open.push_back(source.Quoted(column));
  }
  if (open.empty()) return;
  notes.push_back("the commas in " + Listed(open) +
                  " are read as the mark of decimals, though they would group thousands as well "
                  "(--y-format thousands, of X --x-format, has it so)");
}

void TellOfUnits(const ImportSource& source, const Columns& guessed, Notes& notes) {
  for (const std::int32_t column : guessed) {
    const std::vector<std::string>& units = source.GuessOf(column).units;
    if (units.size() < 2) continue;
    std::vector<std::string> written;
    written.reserve(units.size());
    for (const std::string& unit : units) {
      written.push_back(unit.empty() ? "none" : '"' + Utf8FromText(unit) + '"');
    }
    const bool scaled = source.GuessOf(column).format == ColumnFormat::ScaledUnit;
    notes.push_back("the units in " + source.Quoted(column) + " differ (" + Listed(written) +
                    "): " +
                    (scaled ? "all numbers are in " + CommonBaseUnit(units) +
                                  " (--y-format unit, of X --x-format, takes them as they stand)"
                            : "numbers are read as they stand, not brought to one unit"));
  }
}

void TellOfFactors(const ImportSource& source, const Columns& guessed, Notes& notes) {
  for (const std::int32_t column : guessed) {
    const auto at = static_cast<std::size_t>(std::max(column, 0));
    const bool factors = source.GuessOf(column).format == ColumnFormat::Factor;
    if (column < 0 || !factors || at >= source.samples.size()) continue;
    const auto text = std::ranges::find_if(source.samples[at], [](const std::string& field) {
      return SplitFactor(field).has_value();
    });
    if (text == source.samples[at].end()) continue;
    notes.push_back("letters behind numbers of " + source.Quoted(column) + " are factors (\"" +
                    Utf8FromText(*text) + "\" is " + ShortestText(SplitFactor(*text)->value) + ")");
  }
}

void TellOfFlags(const ImportSource& source, const Columns& guessed, Notes& notes) {
  std::vector<std::string> flagged;
  for (const std::int32_t column : guessed) {
    if (source.GuessOf(column).has_flags) flagged.push_back(source.Quoted(column));
  }
  if (flagged.empty()) return;
  notes.push_back("the marks behind some numbers of " + Listed(flagged) + " are passed over");
}

void TellOfMidnight(const ImportSource& source, const Columns& guessed, Notes& notes) {
  for (const std::int32_t column : guessed) {
    if (source.GuessOf(column).format != ColumnFormat::TimeGoingOn) continue;
    notes.push_back("the times in " + source.Quoted(column) +
                    " go on past midnight without a date: a day is added each time (--x-format "
                    "date shows all on one day)");
  }
}

/// "59:30", "60:00": two numbers of a clock without a date.
bool IsClockOfTwo(std::string_view text) {
  const std::size_t colon = text.find(':');
  return text.size() > 3 && colon + 3 == text.size() && colon > 0 &&
         text.find_first_not_of("0123456789") == colon &&
         text.find_first_not_of("0123456789", colon + 1) == text.npos;
}

/// Hours and minutes that pass a day, row by row in steps of less than an hour, may be minutes and seconds.
void TellOfLongHours(const ImportSource& source, const Columns& guessed, Notes& notes) {
  constexpr double kHour = 1.0 / 24;
  for (const std::int32_t column : guessed) {
    const auto at = static_cast<std::size_t>(std::max(column, 0));
    if (column < 0 || !source.GuessOf(column).is_date || at >= source.samples.size()) continue;
    const std::span<const double> times = source.GuessOf(column).Successive();
    const auto steps_far = [](double one, double next) { return std::abs(next - one) >= kHour; };
    if (times.size() < 2 || std::ranges::max(times) < 1 ||
        std::ranges::adjacent_find(times, steps_far) != times.end() ||
        !std::ranges::all_of(source.samples[at], &IsClockOfTwo)) {
      continue;
    }
    const bool is_x = column == guessed.front();
    notes.push_back(source.Quoted(column) +
                    " is read as hours and minutes, though minutes and seconds would do as well (" +
                    (is_x ? "--x-expr x/60" : "--y-expr y/60") + " has it so)");
  }
}

void TellOfX(const ImportSource& source, const ChosenColumns& columns, Notes& notes) {
  if (!columns.own_x.empty()) return;
  const std::string x = source.Quoted(columns.x);
  if (IsXForWantOfBetter(source, columns.x)) {
    notes.push_back(x +
                    " is taken as X because nothing tells which column is (--x names "
                    "another)");
  } else if (const auto other = RivalOfX(source, columns.x)) {
    notes.push_back(x + " is taken as X, though " + source.Quoted(*other) +
                    " rises as well (--x names another)");
  }
  if (HoldsUnreadDays(source, columns.x)) {
    notes.push_back(x + " is read as numbers, not as dates (" +
                    ShortestText(source.GuessOf(columns.x).values.front()) + ")");
  }
}

/// A value that comes again and again, far from all others, may stand for none.
void TellOfFarValues(const ImportSource& source, const ChosenColumns& columns, Notes& notes) {
  for (const std::int32_t column : columns.y) {
    const ColumnGuess& guess = source.GuessOf(column);
    if (guess.is_date) continue;
    const std::optional<double> far = RepeatedFarFromOthers(guess.values);
    if (!far) continue;
    const std::string value = ShortestText(*far);
    std::string note = source.Quoted(column);
    note += " is " + value;
    note += " in several rows, far from all others (--missing " + value;
    note += " has it stand for no value)";
    notes.push_back(std::move(note));
  }
}

/// The one value below zero, where it comes again and most others are above; -0.01 among lengths.
std::optional<double> LoneNegative(const std::vector<double>& values) {
  constexpr std::size_t kFewestOthers = 20;
  std::optional<double> negative;
  std::size_t times = 0;
  for (const double value : values) {
    if (value >= 0) continue;
    if (negative && value != *negative) return std::nullopt;
    negative = value;
    ++times;
  }
  const auto ends = std::ranges::minmax(values.empty() ? std::vector<double>{0} : values);
  // Levels of a factor and what goes about zero lie on both sides of it.
  const bool above = negative && ends.max > -2 * *negative;
  return above && times > 1 && values.size() >= kFewestOthers + times ? negative : std::nullopt;
}

/// A value below zero that several columns share, which have no other one, may stand for none.
void TellOfSharedNegatives(const ImportSource& source, const ChosenColumns& columns, Notes& notes) {
  constexpr std::size_t kFewest = 3, kMostNames = 5;
  std::vector<std::pair<double, std::vector<std::string>>> found;
  for (const std::int32_t column : columns.y) {
    const ColumnGuess& guess = source.GuessOf(column);
    const std::optional<double> negative = LoneNegative(guess.values);
    if (guess.is_date || !negative || RepeatedFarFromOthers(guess.values)) continue;
    const auto known =
        std::ranges::find(found, *negative, [](const auto& one) { return one.first; });
    std::vector<std::string>& names =
        known != found.end() ? known->second
                             : found.emplace_back(*negative, std::vector<std::string>()).second;
    names.push_back(source.Quoted(column));
  }
  for (const auto& [negative, names] : found) {
    if (names.size() < kFewest) continue;
    const std::string value = ShortestText(negative);
    std::string note = Listed(names, kMostNames);
    note += " are " + value;
    note += " in several rows and never below zero else (--missing " + value;
    note += " has it stand for no value)";
    notes.push_back(std::move(note));
  }
}

}  // namespace

std::vector<std::string> DoubtsOf(const ImportSource& source, const ImportOptions& options,
                                  const ChosenColumns& columns) {
  const Columns guessed = GuessedColumns(options, columns);
  Notes notes;
  if (!options.x_column) TellOfX(source, columns, notes);
  TellOfCommas(source, guessed, notes);
  TellOfUnits(source, guessed, notes);
  TellOfFlags(source, guessed, notes);
  TellOfFactors(source, guessed, notes);
  TellOfMidnight(source, guessed, notes);
  TellOfLongHours(source, guessed, notes);
  if (!options.missing) {
    TellOfFarValues(source, columns, notes);
    TellOfSharedNegatives(source, columns, notes);
  }
  std::ranges::move(SignsLeftOut(source), std::back_inserter(notes));
  return notes;
}

}  // namespace tarnwick
