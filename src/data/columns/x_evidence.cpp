#include "data/columns/x_evidence.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/text_encoding.h"
#include "data/columns/row_identity.h"
#include "data/columns/value_order.h"
#include "data/fields/field_kind.h"
#include "data/names/argument_names.h"
#include "data/names/name_words.h"
#include "data/names/text_names.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewestRows = 8;

bool AreWhole(const std::vector<double>& values) {
  return std::ranges::all_of(values, [](double value) { return value == std::floor(value); });
}

bool NamesCode(std::string_view name) {
  constexpr std::string_view kWords[] = {
      "class",  "type", "group",    "grp",   "species", "cluster", "category", "cat",  "sex",
      "gender", "male", "female",   "trt",   "treat",   "flag",    "status",   "kind", "code",
      "label",  "arm",  "genotype", "block", "batch",   "rep",     "replicate"};
  return HasWord(name, kWords);
}

/// Whole numbers that come again and again.
bool AreKinds(const std::vector<double>& values) {
  constexpr std::size_t kMostKinds = 20;
  if (values.size() < kFewestRows || !AreWhole(values)) return false;
  const std::size_t kinds = CountDifferent(values, kMostKinds);
  return kinds <= kMostKinds && 2 * kinds <= values.size();
}

/// A class of each row, by its name, or since the numbers stand for many rows each and come again.
bool IsCode(const ImportSource& source, std::int32_t column) {
  const std::vector<double>& values = source.GuessOf(column).values;
  constexpr double kLargest = 100;  // of numbers without a meaning of their own
  const bool blocks = MostlyStands(values) && !IsMonotone(values) &&
                      std::ranges::min(values) >= 0 && std::ranges::max(values) <= kLargest;
  return (blocks || NamesCode(source.NameOf(column))) && AreKinds(values);
}

/// "number", "code": of whole numbers in no order.
bool IsNumbered(const ImportSource& source, std::int32_t column) {
  constexpr std::string_view kWords[] = {"number", "nr", "num", "no", "code", "serial"};
  const std::vector<double>& values = source.GuessOf(column).values;
  return values.size() >= kFewestRows && AreWhole(values) && !IsMonotone(values) &&
         HasWord(source.NameOf(column), kWords);
}

/// Most of its fields hold something that is no number: "Inf", "NA".
bool HoldsHardlyNumbers(const ImportSource& source, std::int32_t column) {
  const auto at = static_cast<std::size_t>(column);
  if (at >= source.samples.size()) return false;
  std::size_t filled = 0, numbers = 0;
  for (const std::string& text : source.samples[at]) {
    const FieldKind kind = KindOfField(text);
    filled += kind == FieldKind::Empty ? 0 : 1;
    numbers += kind == FieldKind::Empty || kind == FieldKind::Placeholder || kind == FieldKind::Text
                   ? 0
                   : 1;
  }
  return filled >= kFewestRows && 2 * numbers < filled;
}

/// A name without the number that tells it from those of its kind; empty where there is none.
std::string Stem(std::string_view name) {
  const std::size_t unit = std::min(name.find_first_of("[("), name.size());
  const std::string_view bare = name.substr(0, unit);
  const std::size_t last = bare.find_last_not_of("0123456789 ");
  if (last == bare.npos || last + 1 == bare.size()) return {};
  return LowerAscii(bare.substr(0, last + 1));
}

}  // namespace

bool HasTwoValues(const std::vector<double>& values) {
  if (values.size() < kFewestRows) return false;
  const auto ends = std::ranges::minmax(values);
  return std::ranges::all_of(values,
                             [&](double value) { return value == ends.min || value == ends.max; });
}

bool HasFewWholeValues(const std::vector<double>& values) {
  constexpr std::size_t kMost = 3;
  return values.size() >= kFewestRows && !IsMonotone(values) && AreWhole(values) &&
         CountDifferent(values, kMost) <= kMost;
}

bool SpeaksAgainstX(const ImportSource& source, std::int32_t column) {
  const ColumnGuess& guess = source.GuessOf(column);
  const std::string name = source.NameOf(column);
  if (guess.is_date || LowerAscii(name) == "x") return false;
  if (IdentifiesRows(source, column) || IsNumbered(source, column)) return true;
  if (HoldsHardlyNumbers(source, column)) return true;
  if (NamesArgument(name)) return false;
  const bool called_y = LowerAscii(name) == "y" && !IsMonotone(guess.values);
  // Corners of an outline may be whole.
  if (source.columns.size() == 2 && name == UnnamedColumn(column)) return false;
  return called_y || HasTwoValues(guess.values) || HasFewWholeValues(guess.values) ||
         IsCode(source, column);
}

bool AreItems(const ImportSource& source, std::span<const std::int32_t> columns) {
  constexpr std::size_t kFewest = 3;
  if (columns.size() < kFewest) return false;
  const std::string stem = Stem(source.NameOf(columns.front()));
  const auto is_other = [&](std::int32_t column) { return Stem(source.NameOf(column)) != stem; };
  constexpr std::string_view kOfAnything[] = {"column", "col", "field", "var", "v", "x"};
  return !stem.empty() && !HasWord(stem, kOfAnything) && !NamesArgument(stem) &&
         !IsMonotone(source.GuessOf(columns.front()).values) &&
         std::ranges::none_of(columns, is_other);
}

}  // namespace tarnwick
