#include "data/names/shared_names.h"

#include <algorithm>
#include <cstddef>

#include "data/fields/line_words.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

/// The mark around `kMarkWithinFields` where these two alone part the rows; NUL where others do.
char OuterMark(const TextLayout& layout) {
  if (layout.ByPlace() || layout.IsSeparator(' ') || !layout.IsSeparator(kMarkWithinFields))
    return '\0';
  const bool comma = layout.IsSeparator(','), tab = layout.IsSeparator('\t');
  return comma == tab ? '\0' : comma ? ',' : '\t';
}

}  // namespace

std::optional<std::vector<std::string>> SpreadNames(std::string_view line,
                                                    std::span<const std::string_view> rows,
                                                    const TextLayout& layout,
                                                    std::int32_t columns) {
  const char outer = OuterMark(layout);
  if (outer == '\0' || rows.empty() || line.find(kMarkWithinFields) != line.npos)
    return std::nullopt;
  const std::vector<std::string_view> names = PartsBetween(line, outer);
  const std::vector<std::string_view> fields = PartsBetween(rows.front(), outer);
  if (names.size() != fields.size()) return std::nullopt;
  std::vector<std::string> spread;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto values =
        static_cast<std::size_t>(std::ranges::count(fields[i], kMarkWithinFields)) + 1;
    const std::string name = NameText(names[i], layout);
    for (std::size_t value = 1; value <= values; ++value) {
      spread.push_back(values > 1 && !name.empty() ? name + " " + std::to_string(value) : name);
    }
  }
  if (std::ssize(spread) != columns) return std::nullopt;
  return spread;
}

}  // namespace tarnwick
