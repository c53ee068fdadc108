#include "data/columns/series_in_rows.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "data/fields/field_kind.h"
#include "data/names/number_names.h"

namespace tarnwick {

bool HasRowLabels(const ImportSource& source) {
  constexpr std::size_t kFewest = 3;
  if (source.samples.empty() || source.columns.front().has_numbers) return false;
  std::vector<std::string> labels = source.samples.front();
  if (labels.size() < kFewest || std::ranges::find(labels, "") != labels.end()) return false;
  std::ranges::sort(labels);
  return std::ranges::adjacent_find(labels) == labels.end();
}

bool AreCalledByNumbers(const ImportSource& source) {
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto numbers = std::ranges::count_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Number; });
  return numbers > 2 && 2 * numbers > std::ssize(names);
}

bool HoldsSeriesInRows(const ImportSource& source) {
  constexpr std::size_t kFewest = 3;
  const std::vector<std::string>& names = source.supplier->ColumnNames();
  const auto dated = static_cast<std::size_t>(std::ranges::count_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Date; }));
  if (dated >= kFewest && 2 * dated > names.size()) return true;
  const auto first_number = std::ranges::find_if(
      names, [](const std::string& name) { return KindOfField(name) == FieldKind::Number; });
  if (first_number == names.begin() || !HasRowLabels(source)) return false;
  return AreNumbersAcross(std::span(first_number - 1, names.end()));
}

}  // namespace tarnwick
