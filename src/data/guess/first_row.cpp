#include "data/guess/first_row.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string>

#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/names/names_line.h"
#include "data/names/number_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostOtherLabels = 3;  // lines above the rows with words of their own
constexpr std::size_t kRowsPerLabel = 10;
constexpr std::int32_t kMostFieldsApart = 3;
constexpr std::size_t kMostRaggedRows = 3;

enum class LineKind { Names, Mixed, Values };

/// What a line is, seen by the columns that hold numbers further down.
LineKind KindOf(std::string_view line, const TextLayout& layout, const TableBody& body) {
  FieldCursor cursor(line, layout);
  std::string buffer;
  int values = 0;
  int texts = 0;
  int decimals = 0;
  bool first_is_value = false;
  bool first_is_solid = false;  // all rows of the body have a value there
  for (const ColumnGuess& column : body.columns) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    const std::string_view text = FieldText(*field, layout, buffer);
    const FieldKind kind = KindOfField(text);
    if (!column.has_numbers || kind == FieldKind::Empty || kind == FieldKind::Placeholder) continue;
    // Over numbers a date is a name, and over dates a number with decimals is none.
    const bool decimal = kind == FieldKind::Number && text.find('.') != text.npos;
    const bool value = IsValue(kind) && (column.is_date ? !decimal : kind != FieldKind::Date);
    if (values + texts == 0) {
      first_is_value = value;
      first_is_solid = column.values.size() == body.rows.size();
    }
    ++(value ? values : texts);
    decimals += decimal ? 1 : 0;
  }
  // No names are written with decimals.
  if (texts == 0 || (decimals > 1 && decimals > texts)) return LineKind::Values;
  if (texts > values || (!first_is_value && first_is_solid)) return LineKind::Names;
  return first_is_value ? LineKind::Values : LineKind::Mixed;
}

/// The word that all rows of the body begin with; empty where there is none.
std::string ConstantWord(const TextLayout& layout, const TableBody& body) {
  const auto samples = SampleTexts(body.rows, layout);
  if (samples.empty() || body.columns.empty() || body.columns.front().has_numbers) return {};
  const std::vector<std::string>& first = samples.front();
  const bool constant = std::ranges::all_of(
      first, [&first](const std::string& text) { return text == first.front(); });
  return constant && KindOfField(first.front()) == FieldKind::Text ? first.front() : std::string();
}

/// True for "Dimension, 101, 101" above rows that all begin with "Value".
bool BeginsOtherwise(std::string_view line, const TextLayout& layout, const std::string& word) {
  std::string buffer;
  const std::optional<std::string_view> field = FieldCursor(line, layout).Next();
  return field && FieldText(*field, layout, buffer) != word;
}

/// How many decimals each field has; -1 for what is no number.
std::vector<int> DecimalsOf(std::string_view line, const TextLayout& layout) {
  std::vector<int> decimals;
  FieldCursor cursor(line, layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const std::string_view text = FieldText(*field, layout, buffer);
    const auto behind = static_cast<int>(LengthFromPoint(text));
    decimals.push_back(KindOfField(text) == FieldKind::Number ? std::max(behind - 1, 0) : -1);
  }
  return decimals;
}

/// "M  0.81666  -71.7000" above rows that begin with "D": as many decimals throughout.
bool IsWrittenAs(std::string_view row, std::string_view line, const TextLayout& layout) {
  const std::vector<int> decimals = DecimalsOf(line, layout);
  return std::ranges::count_if(decimals, [](int count) { return count > 1; }) > 1 &&
         decimals == DecimalsOf(row, layout);
}

/// The first row from `from` on that begins as the body does; `from` where more than a few have not.
std::size_t BehindOtherWords(std::span<const std::string_view> lines, std::size_t from,
                             const TextLayout& layout, const TableBody& body) {
  if (body.rows.size() < kRowsPerLabel) return from;
  const std::string word = ConstantWord(layout, body);
  if (word.empty()) return from;
  std::size_t others = 0;
  for (std::size_t i = from; i < lines.size() && others <= kMostOtherLabels; ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    if (!BeginsOtherwise(lines[i], layout, word) ||
        IsWrittenAs(body.rows.front(), lines[i], layout)) {
      return i;
    }
    ++others;
  }
  return from;
}

/// The kinds of a line's fields, values as one.
std::vector<FieldKind> KindsOf(std::string_view line, const TextLayout& layout) {
  std::vector<FieldKind> kinds;
  FieldCursor cursor(line, layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const FieldKind kind = KindOfField(FieldText(*field, layout, buffer));
    kinds.push_back(kind == FieldKind::Quantity ? FieldKind::Number : kind);
  }
  return kinds;
}

/// True for "country;2019;2020;2021;2022": numbers that count on from column to column are names.
bool CountsAcross(std::string_view line, const TextLayout& layout) {
  constexpr int kEnough = 4;
  constexpr int kEnoughYears = 3;
  FieldCursor cursor(line, layout);
  std::string buffer;
  std::optional<double> last;
  int counted = 0;
  bool labelled = false;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const std::string_view text = FieldText(*field, layout, buffer);
    const std::optional<double> value = ParseNumber(text);
    labelled = labelled || (!value && counted == 0);
    if (!value && (counted == 0 || text.empty())) continue;
    if (!value || (last && *value != *last + 1)) return false;
    last = value;
    ++counted;
  }
  const bool years = last && *last > 1900 && *last <= 2100;
  return labelled && counted >= (years ? kEnoughYears : kEnough);
}

/// "id,10,20,30,40" above labelled rows whose numbers do not step so: numbers in even steps name the columns.
bool StepsAcross(std::span<const std::string_view> lines, std::size_t line,
                 const TextLayout& layout, const TableBody& body) {
  if (line + 1 >= lines.size() || body.columns.empty() || body.columns.front().has_numbers) {
    return false;
  }
  const auto steps = [&layout](std::string_view text) {
    const std::vector<std::string> fields = NameTexts(text, layout);
    return !fields.empty() && !fields.front().empty() && AreEvenNumbersAcross(fields);
  };
  return steps(lines[line]) && !steps(lines[line + 1]);
}

/// "Espece 1 2 3 4 E", unlike the line below it.
bool CountsBetweenTexts(std::span<const std::string_view> lines, std::size_t line,
                        const TextLayout& layout) {
  return line + 1 < lines.size() && CountBetweenTexts(NameTexts(lines[line], layout)) &&
         !CountBetweenTexts(NameTexts(lines[line + 1], layout));
}

/// Behind an empty field, above rows that all have one there, numbers that rise name the columns.
bool NamesBehindNothing(std::string_view line, const TextLayout& layout, const TableBody& body) {
  if (body.columns.empty() || body.columns.front().values.size() != body.rows.size()) return false;
  const std::vector<std::string> fields = NameTexts(line, layout);
  return fields.size() == body.columns.size() && fields.front().empty() && AreNumbersAcross(fields);
}

/// " 20 0.0 3.14 1.0" above rows of decimals: behind lines that begin with whole numbers, one of which is shorter than the rows.
std::size_t BehindSizes(std::span<const std::string_view> lines, std::size_t from,
                        const TextLayout& layout, const TableBody& body) {
  constexpr std::size_t kMostSizes = 5;
  const std::vector<std::vector<std::string>> samples = SampleTexts(body.rows, layout);
  const auto decimal = [](const std::string& text) { return text.find('.') != text.npos; };
  if (samples.empty() || samples.front().size() < kRowsPerLabel ||
      !std::ranges::all_of(samples.front(), decimal)) {
    return from;
  }
  bool shorter = false;
  for (std::size_t i = from; i < std::min(lines.size(), from + kMostSizes); ++i) {
    const std::vector<std::string> fields = NameTexts(lines[i], layout);
    if (fields.empty() || !ParseInteger(fields.front())) return shorter ? i : from;
    shorter = shorter || fields.size() < samples.size();
  }
  return from;
}

}  // namespace

std::size_t FirstRow(std::span<const std::string_view> lines, std::size_t from,
                     const TextLayout& layout, const TableBody& body) {
  bool names_seen = std::any_of(
      lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(from), [&](std::string_view line) {
        return IsDataLine(line, layout) && CountFields(line, layout, 2) > 1;
      });
  for (std::size_t i = from; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    const bool across =
        i == from &&
        (CountsAcross(lines[i], layout) || CountsBetweenTexts(lines, i, layout) ||
         NamesBehindNothing(lines[i], layout, body) || StepsAcross(lines, i, layout, body));
    if (across) continue;
    const LineKind kind = KindOf(lines[i], layout, body);
    if (kind == LineKind::Values || (kind == LineKind::Mixed && names_seen)) {
      return BehindOtherWords(lines, BehindSizes(lines, i, layout, body), layout, body);
    }
    names_seen = true;
  }
  return from;
}

namespace {

/// Alike but for empty fields at the end, and for values that are missing.
bool AreAlikeButForEnds(std::span<const FieldKind> one, std::span<const FieldKind> other) {
  const std::size_t shared = std::min(one.size(), other.size());
  const auto is_empty = [](FieldKind kind) { return kind == FieldKind::Empty; };
  const auto alike = [](FieldKind kind, FieldKind same) {
    return kind == same || kind == FieldKind::Placeholder || same == FieldKind::Placeholder;
  };
  return shared > 0 && std::ranges::any_of(one, &IsValue) &&
         std::ranges::all_of(one.subspan(shared), is_empty) &&
         std::ranges::all_of(other.subspan(shared), is_empty) &&
         std::ranges::equal(one.first(shared), other.first(shared), alike);
}

/// Rows above the first that end in another number of separators: the table was found where most end alike.
std::size_t WithRowsOfOtherEnds(std::span<const std::string_view> lines, std::size_t first,
                                const TextLayout& layout) {
  const std::vector<FieldKind> kinds = KindsOf(lines[first], layout);
  bool other_ends = false;
  for (std::size_t i = first; i > 0; --i) {
    if (!IsDataLine(lines[i - 1], layout)) return first;
    const std::vector<FieldKind> above = KindsOf(lines[i - 1], layout);
    other_ends = other_ends || above.size() != kinds.size();
    if (!other_ends || !AreAlikeButForEnds(above, kinds)) return first;
    first = i - 1;
  }
  return first;
}

}  // namespace

std::size_t WithRaggedRowsAbove(std::span<const std::string_view> lines, std::size_t first,
                                const TextLayout& layout) {
  first = WithRowsOfOtherEnds(lines, first, layout);
  const std::vector<FieldKind> kinds = KindsOf(lines[first], layout);
  std::size_t ragged_fields = 0;
  for (std::size_t i = first; i > 0 && first - i <= kMostRaggedRows; --i) {
    if (!IsDataLine(lines[i - 1], layout)) {
      // "  H     1<tab>0<tab>-3.7" above "D<tab>1<tab>1<tab>6.6": with a label as the others have.
      const bool labelled = kinds.front() == FieldKind::Text && i < first;
      return labelled ? i : first;
    }
    const std::vector<FieldKind> above = KindsOf(lines[i - 1], layout);
    const bool names = std::ranges::none_of(above, &IsValue) && above.size() == ragged_fields;
    if (names) return i;
    const auto shared = static_cast<std::ptrdiff_t>(std::min(above.size(), kinds.size()));
    const auto apart = std::ssize(above) - std::ssize(kinds);
    const bool same = std::equal(above.begin(), above.begin() + shared, kinds.begin());
    if (shared < 2 || apart == 0 || std::abs(apart) > kMostFieldsApart || !same) return first;
    ragged_fields = above.size();
  }
  return first;
}

}  // namespace tarnwick
