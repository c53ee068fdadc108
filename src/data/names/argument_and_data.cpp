#include "data/names/argument_and_data.h"

#include <algorithm>
#include <string_view>

#include "base/text_encoding.h"
#include "data/names/argument_names.h"

namespace tarnwick {

bool AreArgumentAndData(std::span<const std::string> names) {
  constexpr std::string_view kArguments[] = {"channel", "wavelength", "wavenumber", "frequency",
                                             "energy",  "angle",      "x",          "time",
                                             "2theta",  "mass",       "m/z",        "q"};
  constexpr std::string_view kData[] = {
      "data",    "counts", "intensity", "absorbance", "signal",    "value", "values",
      "reading", "y",      "abundance", "amplitude",  "magnitude", "count", "reflectance"};
  const auto is_of = [](std::span<const std::string_view> words, const std::string& name) {
    return std::ranges::find(words, LowerAscii(name)) != words.end();
  };
  if (names.size() != 2) return false;
  return (is_of(kArguments, names.front()) && is_of(kData, names.back())) ||
         NameCoordinates(names.front(), names.back());
}

}  // namespace tarnwick
