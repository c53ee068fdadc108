#include "data/columns/series_in_rows.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include "base/day_number.h"
#include "base/text_encoding.h"
#include "data/fields/field_kind.h"
#include "data/names/argument_names.h"
#include "data/names/number_names.h"
#include "data/names/text_names.h"

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

namespace {

/// "Jan", "JANUARY"
bool IsMonth(const std::string& text) {
  constexpr std::size_t kShortest = 3;
  return text.size() >= kShortest && std::ranges::any_of(kMonthNames, [&](std::string_view month) {
           return LowerAscii(month).starts_with(LowerAscii(text));
         });
}

}  // namespace

bool HoldsCurvesInRows(const ImportSource& source) {
  std::vector<std::string> names = source.supplier->ColumnNames();
  for (std::size_t i = names.size(); i > 0; --i) {
    if (names[i - 1] != UnnamedColumn(static_cast<std::int32_t>(i) - 1)) break;
    names[i - 1].clear();
  }
  const std::optional<NamesAcross> across = FindNamesAcross(names);
  if (!across || source.samples.empty() || source.columns.size() < across->behind ||
      source.columns.front().has_numbers || std::ranges::all_of(source.samples.front(), &IsMonth)) {
    return false;
  }
  const auto values = std::span(source.columns).subspan(across->first);
  const auto numbers = static_cast<std::size_t>(
      std::ranges::count_if(values, [](const ColumnGuess& column) { return column.has_numbers; }));
  if (2 * numbers < values.size()) return false;
  const std::string& over = names[across->first - 1];
  const bool has_unit = over.ends_with(']') || over.ends_with(')');
  return across->are_times || (across->first == 1 && (has_unit || NamesArgument(over)));
}

}  // namespace tarnwick
