#include "data/guess/count_row.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "data/fields/field_kind.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

using HeadLines = std::span<const std::string_view>;
using WholeNumbers = std::vector<std::int64_t>;
using FieldTexts = std::vector<std::vector<std::string>>;

constexpr std::int64_t kFewestCounted = 4;  // less is a row like any other
constexpr std::int64_t kMostCounted = 1'000'000;
constexpr std::size_t kMostCountLines = 3;
constexpr std::size_t kFewestSizes = 3;  // of a matrix: its rows, its columns, its values

/// The fields of a line of nothing but whole numbers; empty for any other.
WholeNumbers WholeNumbersOf(std::string_view line, const TextLayout& layout) {
  WholeNumbers numbers;
  FieldCursor cursor(line, layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const auto number = ParseInteger(FieldText(*field, layout, buffer));
    if (!number) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

/// A column of the rows has a decimal in every row.
bool HoldsDecimals(const FieldTexts& columns) {
  return std::ranges::any_of(columns, [](const std::vector<std::string>& column) {
    return std::ranges::all_of(column,
                               [](const std::string& text) { return LengthFromPoint(text) > 0; });
  });
}

/// "4 12 48": no row has more in any column, and none goes on in steps from here.
bool AreSizes(const WholeNumbers& numbers, const WholeNumbers& next, const TableBody& body) {
  if (numbers.size() < kFewestSizes || numbers.size() != body.columns.size()) return false;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const std::vector<double>& values = body.columns[i].values;
    const auto size = static_cast<double>(numbers[i]);
    if (values.empty() || std::ranges::max(values) > size) return false;
  }
  // Of the first row all numbers are small.
  return next.size() == numbers.size() && 2 * std::ranges::max(next) < std::ranges::max(numbers);
}

/// Data lines of a text, but no more than `most`.
std::int64_t CountDataLines(std::string_view text, const TextLayout& layout, std::int64_t most) {
  LineWalker walker(text, layout.line_end);
  std::int64_t count = 0;
  while (!walker.AtEnd() && count < most) count += IsDataLine(walker.Next(), layout) ? 1 : 0;
  return count;
}

/// The number that a line begins with, if one.
std::optional<double> FirstNumberOf(std::string_view line, const TextLayout& layout) {
  FieldCursor cursor(line, layout);
  const std::optional<std::string_view> field = cursor.Next();
  std::string buffer;
  return field ? ParseNumber(FieldText(*field, layout, buffer)) : std::nullopt;
}

/// What is known of the table and of the text behind a line.
struct Below {
  std::string_view text;
  std::string_view line;  ///< the next one
  WholeNumbers next;      ///< of the next line
  const TextLayout& layout;
  const TableBody& body;
};

bool Counts(const WholeNumbers& numbers, const Below& below, bool lone) {
  const FieldTexts samples = SampleTexts(below.body.rows, below.layout);
  // "5 0" above "6 2" is the row before it.
  const bool goes_on = FirstNumberOf(below.line, below.layout) == numbers.front() + 1;
  const bool numbered = !goes_on && StepsByOne(below.body.columns.front().values);
  const bool decimals = samples.size() == numbers.size() && HoldsDecimals(samples);
  if (!numbered && !decimals && !AreSizes(numbers, below.next, below.body)) return false;
  const std::int64_t most = numbered ? numbers.front() : std::ranges::max(numbers);
  if (most < kFewestCounted || most > kMostCounted) return false;
  const std::int64_t rows = CountDataLines(below.text, below.layout, most + 2);
  if (rows < kFewestCounted) return false;
  // From 0 to the number: one more.
  if (lone) return rows == most || rows == most + 1;
  return numbered ? rows == most : std::ranges::find(numbers, rows) != numbers.end();
}

/// "1.0  2.0" above "-2.1719e-01  0.0000e+00" and below "17", of which the rows are a multiple without it.
bool IsWrittenOtherwise(HeadLines lines, std::size_t line, const Below& below) {
  const WholeNumbers above =
      line > 0 ? WholeNumbersOf(lines[line - 1], below.layout) : WholeNumbers();
  const FieldTexts samples = SampleTexts(below.body.rows, below.layout);
  const FieldTexts own = SampleTexts(lines.subspan(line, 1), below.layout);
  if (above.size() != 1 || above.front() < kFewestCounted || samples.size() != own.size()) {
    return false;
  }
  for (std::size_t i = 0; i < samples.size(); ++i) {
    const std::size_t decimals = LengthFromPoint(samples[i].front());
    const bool even = std::ranges::all_of(
        samples[i], [&](const std::string& text) { return LengthFromPoint(text) == decimals; });
    if (!even || decimals == LengthFromPoint(own[i].front())) return false;
  }
  const std::int64_t rows = CountDataLines(below.text, below.layout, kMostCounted);
  return rows > 0 && rows % above.front() == 0;
}

}  // namespace

std::size_t BehindCounts(HeadLines lines, std::size_t first, std::string_view text,
                         const TextLayout& layout, const TableBody& body) {
  if (body.columns.empty() || body.rows.empty()) return first;
  for (std::size_t i = first; i < std::min(first + kMostCountLines, lines.size()); ++i) {
    const WholeNumbers numbers = WholeNumbersOf(lines[i], layout);
    const std::string_view line = i + 1 < lines.size() ? lines[i + 1] : std::string_view();
    const Below below{BehindLines(text, i + 1, layout.line_end), line, WholeNumbersOf(line, layout),
                      layout, body};
    if (numbers.empty()) return i == first && IsWrittenOtherwise(lines, i, below) ? i + 1 : first;
    if (Counts(numbers, below, numbers.size() == 1 && i > first)) return i + 1;
  }
  return first;
}

}  // namespace tarnwick
