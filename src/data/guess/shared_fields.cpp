#include "data/guess/shared_fields.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "base/ascii.h"
#include "data/fields/field_kind.h"
#include "data/fields/line_words.h"
#include "data/fields/text_fields.h"
#include "data/names/shared_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 3;

/// How many values each field of the line holds; empty where one holds something else.
std::vector<std::size_t> ValuesOf(std::string_view line, char outer) {
  std::vector<std::size_t> counts;
  for (const std::string_view field : PartsBetween(line, outer)) {
    const std::vector<std::string_view> values = PartsBetween(field, kMarkWithinFields);
    const bool empty = TrimBlankBytes(field).empty();
    if (!empty && !std::ranges::all_of(
                      values, [](std::string_view one) { return IsValue(KindOfField(one)); })) {
      return {};
    }
    counts.push_back(empty ? 0 : values.size());
  }
  return counts;
}

/// The same numbers of values, but that fields at the end may be empty.
bool HoldsAsMany(std::vector<std::size_t> counts, std::vector<std::size_t> usual) {
  while (!counts.empty() && counts.back() == 0) counts.pop_back();
  return !counts.empty() && counts.size() <= usual.size() &&
         std::equal(counts.begin(), counts.end(), usual.begin());
}

bool PartsAll(std::span<const std::string_view> lines, char outer) {
  constexpr std::size_t kFewestFields = 2;
  std::string_view names;
  std::vector<std::size_t> usual;
  std::size_t rows = 0;
  for (const std::string_view whole : lines) {
    const std::string_view line = TrimBlankBytes(whole);
    if (line.empty() || line.front() == '#') continue;
    if (names.empty()) {
      names = line;
      if (line.find(kMarkWithinFields) != line.npos || std::ranges::none_of(line, &IsLetter))
        return false;
      continue;
    }
    std::vector<std::size_t> counts = ValuesOf(whole, outer);
    if (usual.empty()) {
      usual = counts;
      const auto shared = std::ranges::count_if(usual, [](std::size_t count) { return count > 1; });
      const bool several = 2 * shared >= std::ssize(usual);
      const bool one = std::ranges::find(usual, std::size_t{1}) != usual.end();
      const bool full = std::ranges::find(usual, std::size_t{0}) == usual.end();
      if (usual.size() < kFewestFields || !several || !one || !full ||
          PartsBetween(names, outer).size() != usual.size()) {
        return false;
      }
    }
    if (!HoldsAsMany(std::move(counts), usual)) return false;
    ++rows;
  }
  return rows >= kFewestRows;
}

}  // namespace

std::string MarksOfSharedFields(std::span<const std::string_view> lines) {
  for (const char outer : {',', '\t'}) {
    if (PartsAll(lines, outer)) return {outer, kMarkWithinFields};
  }
  return {};
}

}  // namespace tarnwick
