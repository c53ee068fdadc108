#include "data/guess/column_judge.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "base/ascii.h"
#include "base/day_number.h"
#include "base/zone_place.h"
#include "data/fields/factor_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/field_value.h"
#include "data/fields/known_units.h"
#include "data/fields/si_unit.h"
#include "data/fields/unit_text.h"
#include "data/guess/day_order.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kKeptValues = 400;     // per column
constexpr std::size_t kKeptFields = 20'000;  // over all columns
constexpr std::size_t kSampleRows = 64;
constexpr std::size_t kNotedUnits = 4;

struct ColumnCounts {
  int filled = 0;
  int numbers = 0;         ///< with "." or a lone ","
  int points = 0;          ///< fields with a point as the mark of decimals
  int commas = 0;          ///< fields that hold a comma
  int open_commas = 0;     ///< of these, fields whose comma may group as well as be the decimals'
  int decimal_commas = 0;  ///< fields that read by the decimal comma format
  int grouped = 0;         ///< fields that read with commas grouping thousands
  int groupings = 0;       ///< of these, fields that read so and no other way
  int quantities = 0;      ///< fields with a unit behind the number
  int flagged = 0;         ///< of these, with a mark in the place of the unit
  int uncertain = 0;       ///< of these, with "± 0.2" or " (5)" there
  int with_errors = 0;     ///< of these, with "± 0.2" or "(5)", which can be read
  int joined = 0;          ///< of the quantities, with letters right behind the digits
  int labels =
      0;  ///< texts that begin as numbers with letters that are no known unit: "2p", "8M4I"
  int factored = 0;                       ///< numbers with the letter of a factor: "500.p"
  int bare_factors = 0;                   ///< of these, right behind the point: "1.K"
  std::vector<std::string> factors = {};  ///< these letters
  std::vector<std::string> units = {};    ///< different ones, "" where a number but zero has none
  int days_month_first = 0;
  int days_day_first = 0;
  int open_days = 0;  ///< fields whose day differs by the order
  int zones = 0;
  int intervals = 0;
  int places = 0;            ///< times with a place for a zone
  std::size_t last_row = 0;  ///< the last one, from 1, where it is filled
};

/// A text that holds one point: whether digits stand behind it as they do behind one that groups.
bool PointMayGroup(std::string_view text, std::size_t point) {
  return text.size() - point - 1 >= 3 && point <= 4;
}

/// Digits before a comma that groups begin with none that is zero.
bool BeginsWithZero(std::string_view text) {
  const std::size_t digit = text.find_first_of("0123456789");
  return digit != text.npos && text[digit] == '0';
}

void NoteUnit(std::string_view unit, ColumnCounts& column) {
  const bool few = column.units.size() < kNotedUnits;
  if (few && std::ranges::find(column.units, unit) == column.units.end()) {
    column.units.emplace_back(unit);
  }
}

void CountNumber(std::string_view text, ColumnCounts& column) {
  const std::size_t point = text.find('.');
  const bool comma = text.find(',') != text.npos;
  column.commas += comma ? 1 : 0;
  const bool grouped_by_blanks = text.find(' ') != text.npos;
  const bool grouped_by_points = text.find('.', point + 1) != text.npos && point != text.npos;
  const bool number = (!comma && !grouped_by_blanks && !grouped_by_points) ||
                      ValueOfField(text, ColumnFormat::Number).has_value();
  column.numbers += number ? 1 : 0;
  column.points += number && !comma && point != text.npos && !PointMayGroup(text, point) ? 1 : 0;
  if (!comma && !grouped_by_blanks) {
    // A number without a comma reads in every format, but with a point only where that may group.
    const bool reads =
        point == text.npos || grouped_by_points ||
        (PointMayGroup(text, point) && ValueOfField(text, ColumnFormat::DecimalComma));
    column.decimal_commas += reads ? 1 : 0;
    ++column.grouped;
    return;
  }
  const bool decimal_comma = ValueOfField(text, ColumnFormat::DecimalComma).has_value();
  const bool grouped = ValueOfField(text, ColumnFormat::GroupedThousands).has_value();
  column.decimal_commas += decimal_comma ? 1 : 0;
  column.grouped += grouped ? 1 : 0;
  column.open_commas += comma && decimal_comma && grouped && !BeginsWithZero(text) ? 1 : 0;
  column.groupings += grouped && !number && (!decimal_comma || !comma) ? 1 : 0;
}

void CountQuantity(std::string_view text, ColumnCounts& column) {
  if (const std::optional<NumberAndUnit> split = SplitUnit(text)) {
    ++column.quantities;
    column.joined += split->joined && split->unit.size() == 1 && IsLetter(split->unit[0]) ? 1 : 0;
    const std::string_view written = split->unit;
    const bool flagged = text.back() == '*' || text.back() == '#';
    column.uncertain += text.back() != '%' && written.empty() ? 1 : 0;
    column.flagged += flagged ? 1 : 0;
    column.with_errors += split->uncertainty ? 1 : 0;
    if (!flagged && !written.empty()) NoteUnit(written, column);
  } else {
    CountNumber(text, column);
  }
}

/// True where the text is such a number, whose letter is no unit.
bool CountFactor(std::string_view text, ColumnCounts& column) {
  const std::optional<NumberAndFactor> split = SplitFactor(text);
  if (!split) return false;
  ++column.factored;
  // "1.K": nobody writes a unit so.
  column.bare_factors +=
      text[TrimBlankBytes(text).size() - split->letter.size() - 1] == '.' ? 1 : 0;
  if (std::ranges::find(column.factors, split->letter) == column.factors.end()) {
    column.factors.emplace_back(split->letter);
  }
  return !IsKnownUnit(split->letter);
}

/// Every field is a number, some with letters that are factors: several of them, or one that is no unit beside plain numbers.
/// "3.n" in all rows is a label.
bool HoldsFactors(const ColumnCounts& counts) {
  const bool no_unit = counts.bare_factors > 0 ||
                       (counts.factors.size() == 1 && !IsKnownUnit(counts.factors.front()));
  return (counts.factors.size() > 1 || (counts.numbers > 0 && no_unit)) && counts.commas == 0 &&
         counts.numbers + counts.factored == counts.filled;
}

void CountDate(std::string_view text, ColumnCounts& column) {
  const std::optional<double> month_first = ValueOfField(text, ColumnFormat::DateMonthFirst);
  const std::optional<double> day_first = ValueOfField(text, ColumnFormat::DateDayFirst);
  column.days_month_first += month_first ? 1 : 0;
  column.days_day_first += day_first ? 1 : 0;
  const std::string_view beginning = BeginningOfInterval(text);
  column.intervals += beginning.empty() ? 0 : 1;
  column.places += ZonePlaceAtEnd(text).empty() ? 0 : 1;
  column.zones += HasZone(beginning.empty() ? text : beginning) ? 1 : 0;
  column.open_days += month_first && day_first && *month_first != *day_first ? 1 : 0;
}

/// "2p", "8M4I": digits and letters by turns that are no number with a known unit.
bool IsLabelOfDigits(std::string_view text) {
  if (SplitUnit(text)) return true;
  const auto letter = std::ranges::find_if(text, &IsLetter);
  return !text.empty() && IsDigit(text.front()) &&
         std::find_if(letter, text.end(), &IsDigit) != text.end() &&
         std::ranges::all_of(text, [](char c) { return IsDigit(c) || IsLetter(c); });
}

void CountField(std::string_view text, ColumnCounts& column) {
  switch (KindOfField(text)) {
    case FieldKind::Empty:
      return;
    case FieldKind::Placeholder:
      // Formats of records fill whole columns with it: a few numbers among many make none.
      column.filled += text == "." ? 1 : 0;
      return;
    case FieldKind::Number:
      CountNumber(text, column);
      if (text.find_first_of("123456789") != text.npos) NoteUnit("", column);
      break;
    case FieldKind::Date:
      CountDate(text, column);
      break;
    case FieldKind::Quantity:
      if (!CountFactor(text, column)) CountQuantity(text, column);
      break;
    case FieldKind::Text:
      column.labels += IsLabelOfDigits(text) ? 1 : 0;
      break;
  }
  ++column.filled;
}

ColumnGuess Judge(const ColumnCounts& counts) {
  ColumnGuess guess;
  if (HoldsFactors(counts)) {
    guess.has_numbers = true;
    guess.format = ColumnFormat::Factor;
    return guess;
  }
  const int days = std::max(counts.days_month_first, counts.days_day_first);
  const bool groups = counts.groupings > 0 && counts.grouped >= counts.numbers &&
                      (counts.grouped > counts.decimal_commas || counts.commas == 0);
  const int numbers = groups ? counts.grouped : std::max(counts.numbers, counts.decimal_commas);
  const int best = std::max({days, numbers, numbers + counts.quantities});
  guess.has_numbers = counts.filled > 0 && 2 * best >= counts.filled;
  // "1s", "2s", "2p": beside letters that are no unit those that are one are none either.
  if (counts.labels > 0 && counts.quantities > numbers) guess.has_numbers = false;
  // A word behind each number that is no unit and another one in every row is a label.
  const bool many =
      counts.units.size() == kNotedUnits &&
      std::ranges::none_of(counts.units, [](const std::string& unit) { return IsKnownUnit(unit); });
  if (many && counts.quantities > numbers) guess.has_numbers = false;
  if (!guess.has_numbers) return guess;
  guess.is_date = days > numbers;
  guess.has_places = guess.is_date && counts.places > 0 && counts.zones == 0;
  guess.has_zone = guess.is_date && counts.zones > 0;
  guess.has_intervals = guess.is_date && counts.intervals > 0;
  if (guess.is_date) {
    const bool day_first = counts.days_day_first > counts.days_month_first;
    if (day_first) guess.format = ColumnFormat::DateDayFirst;
    guess.day_order_open = counts.open_days > 0 && counts.days_day_first == counts.days_month_first;
    return guess;
  }
  const bool flags = counts.flagged > 0 && counts.flagged == counts.quantities;
  guess.has_units = counts.quantities > numbers || (flags && !groups && counts.commas == 0);
  guess.has_uncertainties = guess.has_units && counts.uncertain > 0;
  if (guess.has_units) {
    const bool units_only = counts.flagged + counts.uncertain == 0;
    const bool scaled =
        units_only && counts.units.size() < kNotedUnits && !CommonBaseUnit(counts.units).empty();
    guess.format = scaled ? ColumnFormat::ScaledUnit : ColumnFormat::NumberWithUnit;
    guess.units = counts.units;
    guess.has_flags = counts.flagged > 0;
    guess.has_errors = 2 * counts.with_errors > counts.filled;
  } else if (groups) {
    guess.format = ColumnFormat::GroupedThousands;
  } else if (counts.decimal_commas > counts.numbers ||
             (counts.commas > 0 && counts.decimal_commas == counts.numbers)) {
    guess.format = ColumnFormat::DecimalComma;
    guess.commas_open = counts.commas > 0 && counts.open_commas == counts.commas;
  } else if (days > 0) {
    // "1:48.3" among seconds would be a part of a day.
    guess.format = ColumnFormat::Number;
  }
  return guess;
}

/// Marks columns that the first rows have and the many behind them do not, as settings do that stand beside the rows, with
/// texts that say what they set. A short series beside a long one has none.
void FindColumnsAhead(std::size_t rows, const std::vector<ColumnCounts>& counts,
                      std::vector<ColumnGuess>& columns) {
  constexpr std::size_t kMostAhead = 20;
  constexpr std::size_t kShareAhead = 3;
  const auto is_ahead = [rows](const ColumnCounts& column) {
    return column.last_row > 0 && column.last_row <= kMostAhead &&
           kShareAhead * column.last_row < rows;
  };
  bool labelled = false;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    labelled = labelled || (is_ahead(counts[i]) && !columns[i].has_numbers);
  }
  for (std::size_t i = 0; i < columns.size() && labelled; ++i) {
    columns[i].only_ahead = is_ahead(counts[i]);
  }
}

/// Between columns parted by commas "99,362" is no decimal beside "0.5" in another: the comma groups.
void SettleCommas(const TextLayout& layout, const std::vector<ColumnCounts>& counts,
                  std::vector<ColumnGuess>& columns) {
  const auto has_points = [](const ColumnCounts& column) { return column.points > 0; };
  if (!layout.IsSeparator(',') || std::ranges::none_of(counts, has_points)) return;
  for (ColumnGuess& column : columns) {
    if (!column.commas_open) continue;
    column.commas_open = false;
    column.format = ColumnFormat::GroupedThousands;
  }
}

/// "0d", "b5", "31": two digits to the base of sixteen.
bool IsByte(std::string_view text) {
  const auto is_digit = [](char c) {
    return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
  };
  return text.size() == 2 && std::ranges::all_of(text, is_digit);
}

/// Hands over the texts of a row's fields by column.
template <class Take>
void ForEachField(std::string_view row, const TextLayout& layout, std::string& buffer, Take take) {
  FieldCursor cursor(row, layout);
  for (std::size_t i = 0; i < static_cast<std::size_t>(kMostColumns); ++i) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) return;
    take(i, FieldText(*field, layout, buffer));
  }
}

/// Where several columns hold bytes throughout and some of these no decimal digit first, neither they nor the others are numbers.
void LeaveOutBytes(std::span<const std::string_view> rows, const TextLayout& layout,
                   std::vector<ColumnGuess>& columns) {
  constexpr std::ptrdiff_t kFewest = 4;
  if (std::ranges::count(columns, false, &ColumnGuess::has_numbers) < 2) return;
  enum class Bytes : std::uint8_t { None, Digits, Letters };
  std::vector<Bytes> bytes(columns.size(), Bytes::Digits);
  std::string buffer;
  for (const std::string_view row : rows) {
    ForEachField(row, layout, buffer, [&](std::size_t i, std::string_view text) {
      if (bytes[i] == Bytes::None) return;
      if (!IsByte(text)) {
        bytes[i] = Bytes::None;
      } else if (!IsDigit(text.front())) {
        bytes[i] = Bytes::Letters;
      }
    });
  }
  const std::ptrdiff_t letters = std::ranges::count(bytes, Bytes::Letters);
  if (letters < 2 || letters + std::ranges::count(bytes, Bytes::Digits) < kFewest) return;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (bytes[i] != Bytes::None) columns[i].has_numbers = false;
  }
}

/// "\"1\",0.5,2": only one column has its numbers in quotes, in every row.
void FindQuotedNumbers(std::span<const std::string_view> rows, const TextLayout& layout,
                       std::vector<ColumnGuess>& columns) {
  std::vector<std::size_t> quoted(columns.size(), 0);
  for (const std::string_view row : rows) {
    if (row.find('"') == row.npos) return;
    FieldCursor cursor(row, layout);
    for (std::size_t& count : quoted) {
      const std::optional<std::string_view> field = cursor.Next();
      if (!field) break;
      count += field->starts_with('"') ? 1 : 0;
    }
  }
  std::size_t found = 0, last = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].has_numbers || quoted[i] == 0) continue;
    ++found;
    last = i;
  }
  if (found == 1) columns[last].is_quoted = quoted[last] == rows.size();
}

/// Dates that read in both orders have the day first where they go on evenly so, or fall into the months that another column of
/// dates tells.
void SettleDayOrders(std::span<const std::string_view> rows, const TextLayout& layout,
                     std::vector<ColumnGuess>& columns) {
  if (std::ranges::none_of(columns, &ColumnGuess::day_order_open)) return;
  const std::size_t kept = std::min(rows.size(), kKeptValues);
  std::vector<std::vector<std::string>> texts(columns.size());
  std::string buffer;
  for (std::size_t row = 0; row < kept; ++row) {
    ForEachField(rows[row], layout, buffer, [&](std::size_t i, std::string_view text) {
      if (!columns[i].is_date) return;
      texts[i].resize(row);
      texts[i].emplace_back(text);
    });
  }
  std::vector<std::vector<std::string>> certain;  // of the dates whose order is no question
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (columns[i].is_date && !columns[i].day_order_open) certain.push_back(texts[i]);
  }
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].day_order_open) continue;
    const bool by_other = std::ranges::any_of(
        certain, [&](const auto& others) { return AgreeInMonthWithDayFirst(texts[i], others); });
    if (by_other || GoOnWithDayFirst(texts[i])) columns[i].format = ColumnFormat::DateDayFirst;
  }
}

void KeepValues(std::span<const std::string_view> rows, const TextLayout& layout,
                std::size_t later_rows, std::vector<ColumnGuess>& columns) {
  const std::size_t most = kKeptFields / std::max<std::size_t>(columns.size(), 1);
  const std::size_t kept = std::min({rows.size(), most, kKeptValues});
  std::string buffer;
  for (std::size_t row = 0; row < kept; ++row) {
    const std::size_t later = row + later_rows < rows.size() ? 0 : 1;
    ForEachField(rows[row], layout, buffer, [&](std::size_t i, std::string_view text) {
      if (!columns[i].has_numbers) return;
      const std::optional<double> value = ValueOfField(text, columns[i].format);
      if (!value) return;
      columns[i].values.push_back(*value);
      columns[i].later_values += later;
    });
  }
}

}  // namespace

bool ColumnGuess::IsConstant() const {
  return values.size() > 1 &&
         std::ranges::all_of(values, [&](double value) { return value == values.front(); });
}

bool StepsByOne(std::span<const double> values) {
  const auto steps_otherwise = [](double one, double next) { return next != one + 1; };
  return values.size() > 2 && std::ranges::adjacent_find(values, steps_otherwise) == values.end();
}

bool ColumnGuess::CountsRows() const {
  const std::size_t successive = Successive().size();
  if (successive < 3 || is_date || (values.front() != 0 && values.front() != 1)) return false;
  for (std::size_t i = 1; i < values.size(); ++i) {
    const double step = values[i] - values[i - 1];
    if (i < successive ? step != 1 : step < 1 || step != std::floor(step)) return false;
  }
  return true;
}

std::vector<ColumnGuess> JudgeColumns(std::span<const std::string_view> rows,
                                      const TextLayout& layout, std::size_t later_rows) {
  std::vector<ColumnCounts> counts;
  std::string buffer;
  for (std::size_t row = 0; row < rows.size(); ++row) {
    ForEachField(rows[row], layout, buffer, [&](std::size_t i, std::string_view text) {
      if (counts.size() <= i) counts.resize(i + 1);
      const int filled = counts[i].filled;
      CountField(text, counts[i]);
      if (counts[i].filled > filled) counts[i].last_row = row + 1;
    });
  }
  std::vector<ColumnGuess> columns;
  columns.reserve(counts.size());
  for (const ColumnCounts& column : counts) columns.push_back(Judge(column));
  SettleCommas(layout, counts, columns);
  LeaveOutBytes(rows, layout, columns);
  FindColumnsAhead(rows.size(), counts, columns);
  FindQuotedNumbers(rows, layout, columns);
  SettleDayOrders(rows.first(rows.size() - std::min(later_rows, rows.size())), layout, columns);
  KeepValues(rows, layout, later_rows, columns);
  // "3H" in every row: what is always the same is a label.
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const bool joined = counts[i].joined > 0 && 2 * counts[i].joined > counts[i].filled;
    if (joined && columns[i].has_units && columns[i].IsConstant()) columns[i] = ColumnGuess();
  }
  return columns;
}

std::vector<std::vector<std::string>> SampleTexts(std::span<const std::string_view> rows,
                                                  const TextLayout& layout) {
  std::vector<std::vector<std::string>> texts;
  std::string buffer;
  const std::size_t count = std::min(rows.size(), kSampleRows);
  for (std::size_t row = 0; row < count; ++row) {
    ForEachField(rows[row], layout, buffer, [&](std::size_t i, std::string_view text) {
      if (texts.size() <= i) texts.resize(i + 1, std::vector<std::string>(count));
      texts[i][row] = text;
    });
  }
  return texts;
}

}  // namespace tarnwick
