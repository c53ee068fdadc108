#include "data/text/format_guess_lines.h"

#include <algorithm>

#include "base/text_encoding.h"
#include "data/text/field_value.h"
#include "data/text/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFirstBytes = 256 * 1024;
constexpr std::size_t kFirstLines = 400;
constexpr std::size_t kLongestLine = 64 * 1024;
constexpr std::size_t kPlaces = 16;  // probed behind the first lines
constexpr std::size_t kPlaceBytes = 4096;
constexpr int kMostFields = 1000;

/// The whole lines within text[from, to).
void AddLinesWithin(std::string_view text, std::size_t from, std::size_t to, char line_end,
                    std::vector<std::string_view>& lines) {
  const std::size_t begin = text.find(line_end, from);
  if (begin >= to) return;
  const std::size_t end = text.rfind(line_end, to - 1);
  if (end == text.npos || end <= begin) return;
  LineWalker walker(text.substr(begin + 1, end - begin - 1), line_end);
  while (!walker.AtEnd()) lines.push_back(walker.Next());
}

}  // namespace

char GuessLineEnd(std::string_view text) {
  const std::string_view head = text.substr(0, kFirstBytes);
  const bool returns_only = head.find('\n') == head.npos && head.find('\r') != head.npos;
  return returns_only ? '\r' : '\n';
}

GuessLines CollectGuessLines(std::string_view text) {
  GuessLines lines;
  const char line_end = GuessLineEnd(text);
  const std::string_view head = text.substr(0, kFirstBytes);
  LineWalker walker(head, line_end);
  while (!walker.AtEnd() && lines.first.size() < kFirstLines) {
    const std::string_view line = walker.Next();
    const bool cut = walker.AtEnd() && head.size() < text.size() && !lines.first.empty();
    if (!cut) lines.first.push_back(line.substr(0, kLongestLine));
  }
  const auto seen = static_cast<std::size_t>(walker.Position() - text.data());
  const std::size_t step = (text.size() - seen) / kPlaces;
  if (step < kPlaceBytes) {
    const std::size_t from = seen > 0 ? seen - 1 : 0;
    AddLinesWithin(text, from, std::min(text.size(), from + kPlaces * kPlaceBytes), line_end,
                   lines.later);
    return lines;
  }
  for (std::size_t place = 1; place <= kPlaces; ++place) {
    const std::size_t to = seen + place * step;
    AddLinesWithin(text, to - kPlaceBytes, to, line_end, lines.later);
  }
  return lines;
}

LineShape ShapeOf(std::string_view line, const TextLayout& layout) {
  LineShape shape;
  TextLayout unmerged = layout;
  unmerged.merge = false;
  FieldCursor cursor(line, unmerged);
  std::string buffer;
  while (shape.separators < kMostFields) {
    const std::optional<std::string_view> field = cursor.Next();
    if (!field) break;
    ++shape.separators;
    if (!field->empty()) ++shape.fields;
    const std::string_view text = FieldText(*field, layout, buffer);
    if (text.empty()) continue;
    ++shape.filled;
    if (IsAnyValue(text)) ++shape.values;
  }
  shape.separators = std::max(shape.separators - 1, 0);
  return shape;
}

bool IsAnyValue(std::string_view text) {
  return FieldValue(text, ColumnFormat::Automatic) ||
         FieldValue(text, ColumnFormat::DecimalComma) ||
         FieldValue(text, ColumnFormat::GroupedThousands) ||
         FieldValue(text, ColumnFormat::DateMonthFirst) ||
         FieldValue(text, ColumnFormat::DateDayFirst);
}

bool IsPlaceholder(std::string_view text) {
  constexpr std::string_view kPlaceholders[] = {"na",   "n/a",  "nan", "#n/a", "-",    "--", "---",
                                                "null", "none", "inf", "-inf", "+inf", "?"};
  const std::string lower = LowerAscii(TrimBlankBytes(text.substr(0, 16)));
  return std::find(std::begin(kPlaceholders), std::end(kPlaceholders), lower) !=
         std::end(kPlaceholders);
}

}  // namespace tarnwick
