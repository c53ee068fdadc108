#include "data/guess/count_row.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/number_text.h"
#include "data/text/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kFewestCounted = 4;  // less is a row like any other
constexpr std::int64_t kMostCounted = 1'000'000;

/// The fields of a line of nothing but whole numbers; empty for any other.
std::vector<std::int64_t> WholeNumbersOf(std::string_view line, const TextLayout& layout) {
  std::vector<std::int64_t> numbers;
  FieldCursor cursor(line, layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const std::string_view text = FieldText(*field, layout, buffer);
    const auto number = ParseInteger(text);
    if (!number) return {};
    numbers.push_back(*number);
  }
  return numbers;
}

/// A column of `columns` fields has a decimal in every row.
bool HoldsDecimals(const TableBody& body, const TextLayout& layout, std::size_t columns) {
  const std::vector<std::vector<std::string>> samples = SampleTexts(body.rows, layout);
  const auto decimal = [](const std::string& text) { return text.find('.') != text.npos; };
  return samples.size() == columns && std::ranges::any_of(samples, [&](const auto& column) {
           return std::ranges::all_of(column, decimal);
         });
}

bool StepsByOne(std::span<const double> values) {
  return values.size() > 2 && std::ranges::adjacent_find(values, [](double a, double b) {
                                return b != a + 1;
                              }) == values.end();
}

/// Data lines of a text, but no more than `most`.
std::int64_t CountDataLines(std::string_view text, const TextLayout& layout, std::int64_t most) {
  LineWalker walker(text, layout.line_end);
  std::int64_t count = 0;
  while (!walker.AtEnd() && count < most) count += IsDataLine(walker.Next(), layout) ? 1 : 0;
  return count;
}

}  // namespace

bool CountsRowsBelow(std::string_view row, std::string_view below, const TextLayout& layout,
                     const TableBody& body) {
  const std::vector<std::int64_t> numbers = WholeNumbersOf(row, layout);
  if (numbers.empty() || body.columns.empty()) return false;
  const bool numbered = StepsByOne(body.columns.front().values);
  if (!numbered && !HoldsDecimals(body, layout, numbers.size())) return false;
  const std::int64_t most = numbered ? numbers.front() : std::ranges::max(numbers);
  if (most < kFewestCounted || most > kMostCounted) return false;
  const std::int64_t rows = CountDataLines(below, layout, most + 1);
  return rows >= kFewestCounted &&
         (numbered ? rows == most : std::ranges::find(numbers, rows) != numbers.end());
}

}  // namespace tarnwick
