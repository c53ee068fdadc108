#include "data/names/shared_names.h"

#include <algorithm>
#include <cstddef>

#include "data/names/names_line.h"

namespace tarnwick {
namespace {

constexpr char kInner = ';';

/// The mark around `kInner` where these two alone part the rows; NUL where others do.
char OuterMark(const TextLayout& layout) {
  if (layout.ByPlace() || layout.IsSeparator(' ') || !layout.IsSeparator(kInner)) return '\0';
  const bool comma = layout.IsSeparator(','), tab = layout.IsSeparator('\t');
  return comma == tab ? '\0' : comma ? ',' : '\t';
}

std::vector<std::string_view> PartsOf(std::string_view line, char mark) {
  std::vector<std::string_view> parts;
  for (std::size_t end = line.find(mark); end != line.npos; end = line.find(mark)) {
    parts.push_back(line.substr(0, end));
    line.remove_prefix(end + 1);
  }
  parts.push_back(line);
  return parts;
}

}  // namespace

std::optional<std::vector<std::string>> SpreadNames(std::string_view line,
                                                    std::span<const std::string_view> rows,
                                                    const TextLayout& layout,
                                                    std::int32_t columns) {
  const char outer = OuterMark(layout);
  if (outer == '\0' || rows.empty() || line.find(kInner) != line.npos) return std::nullopt;
  const std::vector<std::string_view> names = PartsOf(line, outer);
  const std::vector<std::string_view> fields = PartsOf(rows.front(), outer);
  if (names.size() != fields.size()) return std::nullopt;
  std::vector<std::string> spread;
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto values = static_cast<std::size_t>(std::ranges::count(fields[i], kInner)) + 1;
    const std::string name = NameText(names[i], layout);
    for (std::size_t value = 1; value <= values; ++value) {
      spread.push_back(values > 1 && !name.empty() ? name + " " + std::to_string(value) : name);
    }
  }
  if (std::ssize(spread) != columns) return std::nullopt;
  return spread;
}

}  // namespace tarnwick
