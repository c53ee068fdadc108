#include "data/names/argument_and_data.h"

#include <algorithm>
#include <string_view>

#include "base/text_encoding.h"

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
  return names.size() == 2 && is_of(kArguments, names.front()) && is_of(kData, names.back());
}

}  // namespace tarnwick
