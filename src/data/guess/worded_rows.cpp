#include "data/guess/worded_rows.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "data/fields/field_kind.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 3;
constexpr std::size_t kFewestPairs = 2;
constexpr std::size_t kMostRows = 60;

using Fields = std::vector<std::string>;

/// The fields of a row; one that is empty behind the last separator is none.
Fields FieldsOf(std::string_view row, const TextLayout& layout) {
  Fields fields = FieldTexts(row, layout);
  if (!fields.empty() && fields.back().empty()) fields.pop_back();
  return fields;
}

}  // namespace

bool NameTheirNumbers(std::span<const std::string_view> rows, const TextLayout& layout) {
  rows = rows.first(std::min(rows.size(), kMostRows));
  if (rows.size() < kFewestRows) return false;
  const Fields words = FieldsOf(rows.front(), layout);
  if (words.size() < 2 * kFewestPairs || words.size() % 2 != 0) return false;
  return std::ranges::all_of(rows, [&](std::string_view row) {
    const Fields fields = FieldsOf(row, layout);
    if (fields.size() != words.size()) return false;
    for (std::size_t i = 0; i < fields.size(); i += 2) {
      const bool pair = KindOfField(fields[i]) == FieldKind::Text && fields[i] == words[i] &&
                        IsValue(KindOfField(fields[i + 1]));
      if (!pair) return false;
    }
    return true;
  });
}

}  // namespace tarnwick
