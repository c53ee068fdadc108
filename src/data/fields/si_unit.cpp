#include "data/fields/si_unit.h"

#include <algorithm>
#include <iterator>

namespace tarnwick {
namespace {

struct Prefix {
  std::string_view written;
  double factor;
};
// "µ" is written as the sign and as the Greek letter.
constexpr Prefix kPrefixes[] = {{"f", 1e-15},       {"p", 1e-12},       {"n", 1e-9}, {"u", 1e-6},
                                {"\xC2\xB5", 1e-6}, {"\xCE\xBC", 1e-6}, {"m", 1e-3}, {"c", 1e-2},
                                {"k", 1e3},         {"K", 1e3},         {"M", 1e6},  {"G", 1e9},
                                {"T", 1e12}};
constexpr std::string_view kBases[] = {
    "V",   "A",   "Hz",  "s",        "sec",          "m",  "g",  "W",  "J",  "N",  "Pa",
    "bar", "Ohm", "ohm", "\xCE\xA9", "\xE2\x84\xA6", "F",  "H",  "C",  "T",  "S",  "eV",
    "mol", "l",   "L",   "B",        "bit",          "Bq", "Gy", "Sv", "lm", "lx", "cal",
    "pc",  "Jy"};

bool IsBase(std::string_view unit) {
  return std::ranges::find(kBases, unit) != std::end(kBases);
}

}  // namespace

std::optional<PrefixedUnit> WithoutPrefix(std::string_view unit) {
  if (IsBase(unit)) return PrefixedUnit{1, unit};
  for (const Prefix& prefix : kPrefixes) {
    const std::string_view rest = unit.substr(std::min(prefix.written.size(), unit.size()));
    if (unit.starts_with(prefix.written) && IsBase(rest)) return PrefixedUnit{prefix.factor, rest};
  }
  return std::nullopt;
}

std::string CommonBaseUnit(std::span<const std::string> units) {
  if (units.size() < 2) return {};
  const std::optional<PrefixedUnit> first = WithoutPrefix(units.front());
  const bool common = first && std::ranges::all_of(units, [&first](const std::string& unit) {
                        const std::optional<PrefixedUnit> other = WithoutPrefix(unit);
                        return other && other->base == first->base;
                      });
  return common ? std::string(first->base) : std::string();
}

}  // namespace tarnwick
