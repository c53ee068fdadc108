#include "data/guess/column_judge.h"

#include <algorithm>
#include <optional>

#include "base/day_number.h"
#include "data/text/field_kind.h"
#include "data/text/field_value.h"
#include "data/text/text_names.h"
#include "data/text/unit_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kKeptValues = 400;     // per column
constexpr std::size_t kKeptFields = 20'000;  // over all columns
constexpr std::size_t kSampleRows = 64;
constexpr std::size_t kNotedUnits = 4;

struct ColumnCounts {
  int filled = 0;
  int numbers = 0;         ///< with "." or a lone ","
  int commas = 0;          ///< fields that hold a comma
  int open_commas = 0;     ///< of these, fields whose comma may group as well as be the decimals'
  int decimal_commas = 0;  ///< fields that read by the decimal comma format
  int grouped = 0;         ///< fields that read with commas grouping thousands
  int groupings = 0;       ///< of these, fields that read so and no other way
  int quantities = 0;      ///< fields with a unit behind the number
  int flagged = 0;         ///< of these, with a mark in the place of the unit
  int uncertain = 0;       ///< of these, with "± 0.2" or "(5)" there
  std::vector<std::string> units = {};  ///< different ones, "" where a number but zero has none
  int days_month_first = 0;
  int days_day_first = 0;
  int open_days = 0;  ///< fields whose day differs by the order
  int zones = 0;
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
  const bool unit = ValueOfField(text, ColumnFormat::NumberWithUnit).has_value();
  if (unit) {
    ++column.quantities;
    const std::string_view written = SplitUnit(text)->unit;
    const bool flagged = text.back() == '*' || text.back() == '#';
    column.uncertain += text.back() != '%' && written.empty() ? 1 : 0;
    column.flagged += flagged ? 1 : 0;
    if (!flagged && !written.empty()) NoteUnit(written, column);
  } else {
    CountNumber(text, column);
  }
}

void CountDate(std::string_view text, ColumnCounts& column) {
  const std::optional<double> month_first = ValueOfField(text, ColumnFormat::DateMonthFirst);
  const std::optional<double> day_first = ValueOfField(text, ColumnFormat::DateDayFirst);
  column.days_month_first += month_first ? 1 : 0;
  column.days_day_first += day_first ? 1 : 0;
  column.zones += HasZone(text) ? 1 : 0;
  column.open_days += month_first && day_first && *month_first != *day_first ? 1 : 0;
}

void CountField(std::string_view text, ColumnCounts& column) {
  switch (KindOfField(text)) {
    case FieldKind::Empty:
    case FieldKind::Placeholder:
      return;
    case FieldKind::Number:
      CountNumber(text, column);
      if (text.find_first_of("123456789") != text.npos) NoteUnit("", column);
      break;
    case FieldKind::Date:
      CountDate(text, column);
      break;
    case FieldKind::Quantity:
      CountQuantity(text, column);
      break;
    case FieldKind::Text:
      break;
  }
  ++column.filled;
}

ColumnGuess Judge(const ColumnCounts& counts) {
  ColumnGuess guess;
  const int days = std::max(counts.days_month_first, counts.days_day_first);
  const bool groups = counts.groupings > 0 && counts.grouped >= counts.numbers &&
                      (counts.grouped > counts.decimal_commas || counts.commas == 0);
  const int numbers = groups ? counts.grouped : std::max(counts.numbers, counts.decimal_commas);
  const int best = std::max({days, numbers, numbers + counts.quantities});
  guess.has_numbers = counts.filled > 0 && 2 * best >= counts.filled;
  if (!guess.has_numbers) return guess;
  guess.is_date = days > numbers;
  guess.has_zone = guess.is_date && counts.zones > 0;
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
    guess.format = ColumnFormat::NumberWithUnit;
    guess.units = counts.units;
  } else if (groups) {
    guess.format = ColumnFormat::GroupedThousands;
  } else if (counts.decimal_commas > counts.numbers ||
             (counts.commas > 0 && counts.decimal_commas == counts.numbers)) {
    guess.format = ColumnFormat::DecimalComma;
    guess.commas_open = counts.commas > 0 && counts.open_commas == counts.commas;
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

void KeepValues(std::span<const std::string_view> rows, const TextLayout& layout,
                std::vector<ColumnGuess>& columns) {
  const std::size_t most = kKeptFields / std::max<std::size_t>(columns.size(), 1);
  std::string buffer;
  for (const std::string_view row : rows.first(std::min({rows.size(), most, kKeptValues}))) {
    ForEachField(row, layout, buffer, [&](std::size_t i, std::string_view text) {
      if (!columns[i].has_numbers) return;
      const std::optional<double> value = ValueOfField(text, columns[i].format);
      if (value) columns[i].values.push_back(*value);
    });
  }
}

}  // namespace

bool ColumnGuess::IsConstant() const {
  return values.size() > 1 &&
         std::ranges::all_of(values, [&](double value) { return value == values.front(); });
}

bool ColumnGuess::CountsRows() const {
  if (values.size() < 3 || is_date || (values.front() != 0 && values.front() != 1)) return false;
  for (std::size_t i = 1; i < values.size(); ++i) {
    if (values[i] != values[i - 1] + 1) return false;
  }
  return true;
}

std::vector<ColumnGuess> JudgeColumns(std::span<const std::string_view> rows,
                                      const TextLayout& layout) {
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
  FindColumnsAhead(rows.size(), counts, columns);
  KeepValues(rows, layout, columns);
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
