#include "data/columns/column_meaning.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>
#include <utility>

#include "base/word_list.h"
#include "data/columns/import_options.h"
#include "data/columns/past_midnight.h"
#include "data/fields/field_value.h"
#include "data/fields/text_fields.h"
#include "data/guess/time_guess.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

using Texts = std::vector<std::string_view>;

/// A column's own name; nothing for one that has none.
std::string OwnName(const ImportSource& source, std::size_t column) {
  const std::string name = source.NameOf(static_cast<std::int32_t>(column));
  return name == UnnamedColumn(static_cast<std::int32_t>(column)) ? std::string() : name;
}

/// Rows beyond the sample may have shown that the day comes first.
ColumnFormat DateFormatOf(const JoinedTimeFound& found, const ImportSource& source) {
  for (std::size_t i = 0; i < found.parts.size(); ++i) {
    const bool day_first = source.columns[found.columns[i]].format == ColumnFormat::DateDayFirst;
    if (found.parts[i] == TimePart::Date && day_first) return ColumnFormat::DateDayFirst;
  }
  return found.date_format;
}

/// One time in every row that was looked at, far ones among them where values could be read.
bool Stands(const JoinedTimeFound& found, const ImportSource& source) {
  constexpr std::size_t kFewestRows = 3;
  return std::ranges::all_of(found.columns, [&](std::size_t column) {
    const std::vector<std::string>& texts = source.samples[column];
    const ColumnGuess& guess = source.columns[column];
    const bool one = texts.size() >= kFewestRows &&
                     std::ranges::adjacent_find(texts, std::ranges::not_equal_to()) == texts.end();
    return one && guess.has_numbers && guess.IsConstant();
  });
}

void TakeTime(const JoinedTimeFound& found, ImportSource& source) {
  // Some format reads a whole date; year and month alone are parts.
  if (found.columns.size() == 1 && found.parts.front() == TimePart::Date) {
    ColumnGuess& column = source.columns[found.columns.front()];
    column.has_numbers = column.is_date = true;
    column.format = found.date_format;
    return;
  }
  JoinedTime time;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < found.parts.size(); ++i) {
    const auto column = static_cast<std::int32_t>(found.columns[i]);
    time.parts.push_back({found.parts[i], source.ReferenceTo(column)});
    names.push_back(source.Quoted(column));
    source.time_columns.push_back(column);
    // Its parts stand in one order.
    if (found.parts[i] != TimePart::Date) source.columns[found.columns[i]].day_order_open = false;
  }
  source.time.has_numbers = source.time.is_date = true;
  source.time.format = DateFormatOf(found, source);
  source.info.TimeColumns = time.Text();
  const auto tells_one_of = [&found](std::initializer_list<TimePart> sought) {
    return std::ranges::find_first_of(found.parts, sought) != found.parts.end();
  };
  using enum TimePart;
  const bool dated =
      tells_one_of({Date, Year, YearMonth}) || !tells_one_of({Month, Day, DayOfYear, Quarter});
  source.notes.push_back(Listed(names) +
                         (names.size() == 1 ? " is the time" : " together are the time") +
                         (dated ? "" : ", in 2001 since there is no year"));
}

void FindTime(ImportSource& source) {
  std::vector<Texts> columns;
  for (const std::vector<std::string>& sample : source.samples) {
    columns.emplace_back(sample.begin(), sample.end());
  }
  std::vector<std::string> names;
  for (std::size_t i = 0; i < columns.size(); ++i) names.push_back(OwnName(source, i));
  const std::optional<JoinedTimeFound> found = FindJoinedTime(names, columns);
  // Nothing can be drawn over a time that stands.
  if (found && !Stands(*found, source)) TakeTime(*found, source);
}

void FindUnixTime(ImportSource& source) {
  for (std::size_t i = 0; i < source.columns.size(); ++i) {
    ColumnGuess& column = source.columns[i];
    if (!column.has_numbers || column.is_date || column.format != ColumnFormat::Automatic) continue;
    const std::string name = source.Quoted(static_cast<std::int32_t>(i));
    const std::optional<ColumnFormat> format = LooksLikeUnixTime(OwnName(source, i), column.values);
    if (!format) continue;
    column.is_date = true;
    column.format = *format;
    const bool whole = *format == ColumnFormat::UnixSeconds;
    source.notes.push_back(name + " is read as " + (whole ? "seconds" : "milliseconds") +
                           " since 1970 (UTC)");
    return;
  }
}

std::string_view DayOf(std::string_view text) {
  return text.substr(0, text.find_first_of(" T"));
}

/// Written like a date, be there such a day or not: "2024-02-30", "31.4.2024 12:00".
bool IsDateLike(std::string_view text) {
  const std::string_view day = DayOf(text);
  if (day.size() < 6 || day.size() > 10) return false;
  const std::size_t first = day.find_first_not_of("0123456789");
  if (first == day.npos || first == 0 || std::string_view("-/.").find(day[first]) == day.npos) {
    return false;
  }
  const std::size_t second = day.find(day[first], first + 1);
  return second != day.npos && second > first + 1 && second + 1 < day.size() &&
         day.find_first_not_of("0123456789", second + 1) == day.npos;
}

void TellOfImpossibleDates(ImportSource& source) {
  for (std::size_t i = 0; i < std::min(source.samples.size(), source.columns.size()); ++i) {
    const auto& sample = source.samples[i];
    const auto dates = static_cast<std::size_t>(std::ranges::count_if(sample, IsDateLike));
    const bool is_read = source.columns[i].has_numbers ||
                         std::ranges::find(source.time_columns, static_cast<std::int32_t>(i)) !=
                             source.time_columns.end();
    if (is_read || dates == 0 || 2 * dates < sample.size()) continue;
    const auto dated = std::ranges::find_if(sample, IsDateLike);
    const bool exists = ValueOfField(DayOf(*dated), ColumnFormat::DateTime).has_value();
    source.notes.push_back(source.Quoted(static_cast<std::int32_t>(i)) + " is left out: " +
                           (exists ? "most of its times cannot be read (\"" + *dated + "\")"
                                   : std::string("most of its dates are in no calendar")));
  }
}

}  // namespace

void SettleTimes(const ImportOptions& options, ImportSource& source) {
  if (!options.x_column && !options.x_format) FindTime(source);
  SettleStoredTimes(options, source);
  for (ColumnGuess& column : source.columns) {
    if (!options.x_format && GoOnPastMidnight(column)) LetGoOn(column);
  }
}

void SettleStoredTimes(const ImportOptions& options, ImportSource& source) {
  if (!options.x_column && !options.x_format) {
    const bool dated = std::ranges::any_of(source.columns, &ColumnGuess::is_date);
    if (!dated && source.time_columns.empty()) FindUnixTime(source);
  }
  TellOfImpossibleDates(source);
  if (std::ranges::any_of(source.columns, &ColumnGuess::has_zone)) {
    source.notes.emplace_back("times with a zone are turned to UTC");
  }
  if (std::ranges::any_of(source.columns, &ColumnGuess::has_places)) {
    source.notes.emplace_back("the places behind times, which tell their zones, are passed over");
  }
  if (std::ranges::any_of(source.columns, &ColumnGuess::has_intervals)) {
    source.notes.emplace_back("intervals of time are read as their beginnings");
  }
  const auto open = std::ranges::find_if(source.columns, &ColumnGuess::day_order_open);
  if (open != source.columns.end() && !options.x_format) {
    const auto column = static_cast<std::int32_t>(open - source.columns.begin());
    const bool day_first = open->format == ColumnFormat::DateDayFirst;
    source.notes.push_back(
        "the dates in " + source.Quoted(column) +
        (day_first ? " are read with the day first, since so they go on "
                     "evenly or agree with another column (--x-format month-first has it otherwise)"
                   : " are read with the month first, though the day first "
                     "would do as well"));
  }
}

}  // namespace tarnwick
