#include "data/guess/labelled_table.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "base/ascii.h"
#include "data/text/field_kind.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 10;
constexpr std::size_t kMostFields = 6;
constexpr std::size_t kMostLinesAbove = 2;  // a count, a line of names

enum class Part { Label, Number, Neither };

Part PartOf(std::string_view text) {
  const FieldKind kind = KindOfField(text);
  if (kind == FieldKind::Number || kind == FieldKind::Placeholder) return Part::Number;
  // Neither the end of a word in a sentence nor a formula.
  constexpr std::string_view kEndsOfWords = ".,;:!?)";
  const bool label =
      kind == FieldKind::Text && kEndsOfWords.find(text.back()) == kEndsOfWords.npos &&
      std::ranges::any_of(text, &IsLetter) && text.find_first_of("=()[]\\@<>{}\"'") == text.npos;
  return label ? Part::Label : Part::Neither;
}

/// What the fields of a line are; empty where it is no row.
std::vector<Part> PartsOf(std::string_view line, const TextLayout& layout) {
  std::vector<Part> parts;
  FieldCursor cursor(TrimBlankBytes(line), layout);
  std::string buffer;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const Part part = PartOf(FieldText(*field, layout, buffer));
    if (part == Part::Neither || parts.size() == kMostFields) return {};
    parts.push_back(part);
  }
  const bool row = parts.size() > 1 && parts.front() == Part::Label &&
                   std::ranges::find(parts, Part::Number) != parts.end();
  return row ? parts : std::vector<Part>();
}

}  // namespace

std::optional<FoundTable> FindLabelledTable(std::span<const std::string_view> lines,
                                            const TextLayout& layout) {
  std::optional<FoundTable> table;
  std::vector<Part> parts;
  std::size_t above = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!IsDataLine(lines[i], layout)) continue;
    const std::vector<Part> found = PartsOf(lines[i], layout);
    if (table && found != parts) return std::nullopt;
    if (found.empty() && ++above > kMostLinesAbove) return std::nullopt;
    if (found.empty()) continue;
    if (!table) table = FoundTable{.first = i, .fields = static_cast<std::int32_t>(found.size())};
    parts = found;
    table->behind = i + 1;
    ++table->rows;
  }
  if (!table || table->rows < kFewestRows) return std::nullopt;
  table->weight = static_cast<double>(table->rows);
  return table;
}

}  // namespace tarnwick
