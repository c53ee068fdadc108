#include "data/fields/byte_description.h"

#include <algorithm>
#include <charconv>

#include "base/ascii.h"
#include "base/text_encoding.h"
#include "data/fields/text_fields.h"

namespace tarnwick {
namespace {

constexpr std::string_view kHeading = "byte-by-byte description";
constexpr std::string_view kOtherHeading = "byte-per-byte description";
constexpr std::int32_t kFarthestByte = 1'000'000;
constexpr std::size_t kShortestRule = 6;

bool IsRule(std::string_view line) {
  line = TrimBlankBytes(line);
  return line.size() >= kShortestRule && (line.front() == '-' || line.front() == '=') &&
         std::ranges::all_of(line, [&](char c) { return c == line.front(); });
}

bool IsHeading(std::string_view line) {
  line = TrimBlankBytes(line);
  if (!line.starts_with('B') && !line.starts_with('b')) return false;
  const std::string lower = LowerAscii(line.substr(0, kHeading.size()));
  return lower == kHeading || lower == kOtherHeading;
}

std::optional<std::int32_t> TakeByte(std::string_view& text) {
  text = TrimBlankBytes(text);
  std::int32_t byte = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), byte);
  if (error != std::errc() || byte < 1 || byte > kFarthestByte) return std::nullopt;
  text = TrimBlankBytes(text.substr(static_cast<std::size_t>(end - text.data())));
  return byte;
}

std::string_view TakeWord(std::string_view& text) {
  const std::string_view word = text.substr(0, text.find_first_of(" \t"));
  text = TrimBlankBytes(text.substr(word.size()));
  return word;
}

/// "I4", "F8.3", "A12": a letter and a width.
bool IsFormat(std::string_view word) {
  constexpr std::string_view kLetters = "AaIiFfEeDd";
  return word.size() >= 2 && kLetters.find(word.front()) != kLetters.npos && IsDigit(word[1]);
}

bool IsNoUnit(std::string_view unit) {
  return unit.find_first_not_of('-') == unit.npos;
}

std::optional<DescribedColumn> ReadColumn(std::string_view line) {
  DescribedColumn column;
  const std::optional<std::int32_t> first = TakeByte(line);
  if (!first) return std::nullopt;
  std::optional<std::int32_t> last = first;
  if (line.starts_with('-')) {
    line.remove_prefix(1);
    last = TakeByte(line);
  }
  const std::string_view format = TakeWord(line);
  if (!last || *last < *first || !IsFormat(format)) return std::nullopt;
  column.begin = *first - 1;
  column.end = *last;
  column.is_number = LowerAscii(format).front() != 'a';
  column.unit = TakeWord(line);
  column.name = TakeWord(line);
  if (column.name.empty()) return std::nullopt;
  if (IsNoUnit(column.unit)) column.unit = {};
  return column;
}

/// The entries behind a heading, to the rule below them. Lines that go on explaining are none.
std::vector<DescribedColumn> ReadColumns(std::span<const std::string_view> behind_heading) {
  std::vector<DescribedColumn> columns;
  for (const std::string_view line : behind_heading) {
    if (IsRule(line) && !columns.empty()) break;
    const std::optional<DescribedColumn> column = ReadColumn(line);
    if (column && (columns.empty() || column->begin >= columns.back().end)) {
      columns.push_back(*column);
    }
  }
  return columns;
}

}  // namespace

std::optional<ByteDescription> FindByteDescription(std::span<const std::string_view> lines) {
  const auto heading = std::ranges::find_if(lines, &IsHeading);
  if (heading == lines.end()) return std::nullopt;
  ByteDescription description;
  description.line = static_cast<std::size_t>(heading - lines.begin());
  description.columns = ReadColumns(lines.subspan(description.line + 1));
  if (description.columns.size() < 2) return std::nullopt;
  for (std::size_t i = description.line; i < lines.size(); ++i) {
    if (IsRule(lines[i])) description.behind = i + 1;
  }
  return description;
}

}  // namespace tarnwick
