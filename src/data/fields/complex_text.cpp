#include "data/fields/complex_text.h"

#include <cstddef>
#include <string>

#include "base/number_text.h"

namespace tarnwick {

bool IsComplexNumber(std::string_view text) {
  constexpr std::size_t kLongest = 80;
  if (text.size() > kLongest) return false;
  std::string packed;
  for (const char c : text) {
    if (c != ' ') packed += c;
  }
  std::string_view rest = packed;
  if (rest.starts_with('(') && rest.ends_with(')')) rest = rest.substr(1, rest.size() - 2);
  constexpr std::string_view kUnits = "ijIJ";
  if (rest.empty() || kUnits.find(rest.back()) == kUnits.npos) return false;
  rest.remove_suffix(1);
  std::size_t sign = rest.find_last_of("+-");
  const bool of_exponent = sign != rest.npos && sign > 0 && (rest[sign - 1] | 0x20) == 'e';
  if (of_exponent) sign = rest.find_last_of("+-", sign - 1);
  return sign != rest.npos && sign > 0 && ParseNumber(rest.substr(0, sign)) &&
         ParseNumber(rest.substr(sign));
}

}  // namespace tarnwick
