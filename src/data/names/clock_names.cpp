#include "data/names/clock_names.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/text_encoding.h"
#include "data/fields/field_kind.h"
#include "data/names/names_line.h"

namespace tarnwick {
namespace {

bool IsCalledTime(const std::string& name) {
  const std::string lower = LowerAscii(name);
  return lower.starts_with("time") || lower.starts_with("date") || lower.starts_with("clock");
}

/// For each field whether it is a time or a date in every row; empty where rows differ in their number.
std::vector<bool> ClocksOf(std::span<const std::string_view> rows, const TextLayout& layout) {
  std::vector<bool> clocks;
  for (const std::string_view row : rows) {
    if (!IsDataLine(row, layout)) continue;
    const std::vector<std::string> texts = NameTexts(row, layout);
    if (clocks.empty()) clocks.resize(texts.size(), true);
    if (texts.size() != clocks.size()) return {};
    for (std::size_t i = 0; i < texts.size(); ++i) {
      clocks[i] = clocks[i] && KindOfField(texts[i]) == FieldKind::Date;
    }
  }
  return clocks;
}

}  // namespace

bool NamesClockFromLeft(std::span<const std::string_view> above,
                        std::span<const std::string_view> rows, const TextLayout& layout) {
  const std::vector<bool> clocks = ClocksOf(rows, layout);
  if (std::ranges::find(clocks, true) == clocks.end()) return false;
  return std::ranges::any_of(above, [&](std::string_view line) {
    const std::vector<std::string> names = NameTexts(line, layout);
    if (names.size() + 1 != clocks.size()) return false;
    for (std::size_t i = 1; i < names.size(); ++i) {
      if (IsCalledTime(names[i]) && clocks[i] && !clocks[i + 1]) return true;
    }
    return false;
  });
}

}  // namespace tarnwick
