#include "data/text/pen_marks.h"

#include <algorithm>
#include <optional>

#include "base/number_text.h"
#include "data/fields/text_lines.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostBytes = 4 << 20;
constexpr std::size_t kMostForms = 4;  // of such rows that are looked at

/// "999.00", "-99": two nines at least, and nothing else but zeros behind the point.
bool IsOfNines(std::string_view field) {
  if (field.starts_with('-')) field.remove_prefix(1);
  const std::size_t point = std::min(field.find('.'), field.size());
  const std::string_view whole = field.substr(0, point);
  return whole.size() > 1 && whole.find_first_not_of('9') == whole.npos &&
         field.find_first_not_of("90.", point) == field.npos;
}

/// The numbers of a row of nines; of any other line none.
std::vector<std::string> NinesOf(std::string_view line, const TextLayout& layout) {
  std::vector<std::string> numbers;
  FieldCursor cursor(TrimBlankBytes(line), layout);
  std::string buffer;
  std::size_t fields = 0;
  while (const std::optional<std::string_view> field = cursor.Next()) {
    const std::string_view text = TrimBlankBytes(FieldText(*field, layout, buffer));
    if (text.empty()) continue;
    if (!IsOfNines(text)) return {};
    ++fields;
    std::string number = ShortestText(*ParseNumber(text));
    if (std::ranges::find(numbers, number) == numbers.end()) numbers.push_back(std::move(number));
  }
  return fields > 1 ? numbers : std::vector<std::string>();
}

}  // namespace

std::vector<std::string> FindPenMarks(std::string_view text, const TextLayout& layout) {
  constexpr std::string_view kOfNines = "90.-+ \t,;";
  std::vector<std::string_view> seen;
  LineWalker walker(text.substr(0, kMostBytes), layout.line_end);
  while (!walker.AtEnd() && seen.size() < kMostForms) {
    const std::string_view line = TrimBlankBytes(walker.Next());
    const bool may_be = line.find('9') != line.npos && (line.front() == '9' || line.front() == '-');
    if (!may_be || line.find_first_not_of(kOfNines) != line.npos) continue;
    std::vector<std::string> numbers = NinesOf(line, layout);
    if (numbers.empty()) continue;
    if (std::ranges::find(seen, line) != seen.end()) return numbers;
    seen.push_back(line);
  }
  return {};
}

}  // namespace tarnwick
