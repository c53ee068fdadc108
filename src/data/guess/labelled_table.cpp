#include "data/guess/labelled_table.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/guess/column_judge.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 10;
constexpr std::size_t kRowsPerOther = 10;  // for one line within them that is none
constexpr std::size_t kMostFields = 6;
constexpr std::size_t kMostLinesAbove = 2;  // a count, a line of names
constexpr std::size_t kLongestKey =
    8;  // before a colon; those of settings are longer, or of many lengths

enum class Part : std::uint8_t { Label, Number, Mark, Neither };

bool IsLabel(std::string_view text) {
  // Neither the end of a word in a sentence nor a formula.
  constexpr std::string_view kEndsOfWords = ".,;:!?)";
  return kEndsOfWords.find(text.back()) == kEndsOfWords.npos &&
         std::ranges::any_of(text, &IsLetter) && text.find_first_of("=()[]\\@<>{}\"'") == text.npos;
}

Part PartOf(std::string_view text) {
  const FieldKind kind = KindOfField(text);
  if (kind == FieldKind::Number || kind == FieldKind::Placeholder) return Part::Number;
  // "1s" beside "2p" is a label as well as a time.
  if (kind != FieldKind::Text && kind != FieldKind::Quantity) return Part::Neither;
  if (text == ":" || text == "=" || text == "|") return Part::Mark;
  return IsLabel(text) ? Part::Label : Part::Neither;
}

/// What the fields of a line are, none where it is no row, and how long the first is where a colon ends it.
struct LabelledRow {
  std::vector<Part> parts;
  std::size_t key = 0;

  bool operator==(const LabelledRow&) const = default;
};

/// "width : 5" is a setting.
bool IsSetting(const std::vector<Part>& parts) {
  return parts.size() < 4 && std::ranges::find(parts, Part::Mark) != parts.end();
}

LabelledRow RowOf(std::string_view line, const TextLayout& layout) {
  LabelledRow row;
  std::vector<Part>& parts = row.parts;
  FieldCursor cursor(TrimBlankBytes(line), layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    std::string_view text = FieldText(*field, layout, buffer);
    // "AA: 0.066" beside "AC: 0.061"
    if (parts.empty() && text.size() > 1 && text.size() <= kLongestKey && text.ends_with(':')) {
      text.remove_suffix(1);
      row.key = text.size();
    }
    const Part part = PartOf(text);
    if (part == Part::Neither || parts.size() == kMostFields) return LabelledRow();
    parts.push_back(part);
  }
  const bool is_row = parts.size() > 1 && parts.front() != Part::Mark && !IsSetting(parts) &&
                      std::ranges::find(parts, Part::Label) != parts.end() &&
                      std::ranges::find(parts, Part::Number) != parts.end();
  return is_row ? row : LabelledRow();
}

/// The only number counts the rows: "1 apple".
bool IsListOfTexts(std::span<const std::string_view> lines, const FoundTable& table,
                   const std::vector<Part>& parts, const TextLayout& layout) {
  if (parts.front() != Part::Number || std::ranges::count(parts, Part::Number) > 1) return false;
  std::vector<std::string_view> rows;
  for (std::size_t i = table.first; i < table.behind; ++i) {
    if (IsDataLine(lines[i], layout)) rows.push_back(lines[i]);
  }
  const std::vector<ColumnGuess> columns = JudgeColumns(rows, layout);
  return columns.empty() || columns.front().CountsRows();
}

}  // namespace

std::optional<FoundTable> FindLabelledTable(std::span<const std::string_view> lines,
                                            const TextLayout& layout) {
  std::optional<FoundTable> table;
  LabelledRow row;
  std::size_t above = 0;
  std::size_t others = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    const LabelledRow found = RowOf(lines[i], layout);
    if (table && found != row) {
      ++others;
      continue;
    }
    if (found.parts.empty() && ++above > kMostLinesAbove) return std::nullopt;
    if (found.parts.empty()) continue;
    if (!table) {
      table = FoundTable{.first = i, .fields = static_cast<std::int32_t>(found.parts.size())};
    }
    row = found;
    table->behind = i + 1;
    ++table->rows;
  }
  if (!table || table->rows < kFewestRows || kRowsPerOther * others > table->rows ||
      IsListOfTexts(lines, *table, row.parts, layout)) {
    return std::nullopt;
  }
  table->weight = static_cast<double>(table->rows);
  return table;
}

}  // namespace tarnwick
