#include "data/names/numbered_names.h"

#include <string_view>

#include "base/number_text.h"

namespace tarnwick {
namespace {

constexpr std::size_t kFewest = 16;
constexpr std::string_view kOfNumbers = "0123456789.";

struct Name {
  std::string_view stem;
  std::string_view number;
};

Name Split(std::string_view name) {
  const std::size_t last = name.find_last_not_of(kOfNumbers);
  const std::size_t behind = last == name.npos ? 0 : last + 1;
  return {name.substr(0, behind), name.substr(behind)};
}

}  // namespace

std::optional<NumberedNames> FindNumberedNames(std::span<const std::string> names) {
  if (names.size() < kFewest) return std::nullopt;
  NumberedNames found;
  found.labelled = Split(names.front()).stem != Split(names.back()).stem;
  const auto numbered = names.subspan(found.labelled ? 1 : 0);
  if (numbered.size() < kFewest) return std::nullopt;
  const std::string_view stem = Split(numbered.front()).stem;
  std::optional<double> last;
  for (const std::string& name : numbered) {
    const Name parts = Split(name);
    const std::optional<double> number = ParseNumber(parts.number);
    if (parts.stem != stem || !number || (last && *number <= *last)) return std::nullopt;
    last = number;
    found.numbers.emplace_back(parts.number);
  }
  // "n0 n1 n2" tell places, no quantity.
  const std::string_view first = found.numbers.front();
  if (first == "0" || first == "1") return std::nullopt;
  found.stem = stem.substr(0, stem.find_last_not_of("_-. ([") + 1);
  // "wavelength,400,410"
  if (found.stem.empty() && found.labelled) found.stem = names.front();
  return found;
}

}  // namespace tarnwick
