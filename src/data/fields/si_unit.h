// Units with the prefixes of the International System, brought to those without. Knows units as texts; no numbers' texts.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace tarnwick {

/// "mV": a thousandth of "V".
struct PrefixedUnit {
  double factor = 1;
  std::string_view base;
};

/// What a unit is of the one without a prefix, which views `unit`: units of physics that take prefixes (V, A, Hz, s, m, g, Ω,
/// Pa, eV, …), by their letters. Nothing for all others, "min" and "m/s" among them.
std::optional<PrefixedUnit> WithoutPrefix(std::string_view unit);

/// The unit without prefix that all of several units have in common; empty where there is none, or only one unit.
std::string CommonBaseUnit(std::span<const std::string> units);

}  // namespace tarnwick
