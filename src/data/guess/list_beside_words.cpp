#include "data/guess/list_beside_words.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 10;
constexpr std::size_t kRowsPerOther = 10;  // for one line that is none

/// How many words the row has; 0 for a line that is none.
std::size_t WordsOfRow(std::string_view line) {
  const std::vector<LineWord> words = WordsOfLine(line);
  if (words.empty()) return 0;
  const std::string_view number = words.front().text;
  const std::size_t point = number.find('.');
  const bool decimals =
      point != number.npos && point + 1 < number.size() && KindOfField(number) == FieldKind::Number;
  const bool named = words.size() == 1 || (KindOfField(words[1].text) == FieldKind::Text &&
                                           std::ranges::any_of(words[1].text, &IsLetter));
  return decimals && named ? words.size() : 0;
}

}  // namespace

std::optional<FoundTable> FindListBesideWords(std::span<const std::string_view> lines,
                                              const TextLayout& layout) {
  std::map<std::size_t, std::size_t> counts;
  std::optional<FoundTable> list;
  std::size_t others = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (TrimBlankBytes(lines[i]).empty() || !IsDataLine(lines[i], layout)) continue;
    const std::size_t words = WordsOfRow(lines[i]);
    others += words == 0 ? 1 : 0;
    if (words == 0) continue;
    if (!list) list = FoundTable{.first = i};
    list->behind = i + 1;
    ++list->rows;
    ++counts[words];
  }
  if (!list || list->rows < kFewestRows || kRowsPerOther * others > list->rows) return std::nullopt;
  if (kRowsPerOther * counts[1] > list->rows || counts.upper_bound(2) == counts.end()) {
    return std::nullopt;
  }
  const auto most =
      std::ranges::max_element(counts, {}, [](const auto& count) { return count.second; });
  list->fields = static_cast<std::int32_t>(most->first);
  list->weight = static_cast<double>(list->rows) / static_cast<double>(list->fields);
  return list;
}

}  // namespace tarnwick
