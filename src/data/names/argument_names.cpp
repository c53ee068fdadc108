#include "data/names/argument_names.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <vector>

#include "base/text_encoding.h"
#include "data/names/name_words.h"

namespace tarnwick {

bool NamesScan(std::string_view name) {
  constexpr std::string_view kWords[] = {"freq",        "frequency", "wavelength", "wavenumber",
                                         "wavenumbers", "2theta",    "twotheta"};
  // "x_cool" is something else.
  const std::vector<std::string> words = WordsOf(name.substr(0, name.find_first_of("[(")));
  constexpr std::string_view kOfX[] = {"value", "axis", "pos", "position", "coord",
                                       "mm",    "m",    "nm",  "um"};
  const bool x = !words.empty() && words.front() == "x" &&
                 (words.size() == 1 || std::ranges::find(kOfX, words[1]) != std::end(kOfX));
  return x || HasWord(name, kWords) || LowerAscii(name).starts_with("m/z");
}

bool NamesTime(std::string_view name) {
  constexpr std::string_view kWords[] = {"time",    "t",    "date",  "timestamp", "datetime",
                                         "elapsed", "year", "yr",    "jd",        "mjd",
                                         "hjd",     "zeit", "temps", "tempo",     "tiempo"};
  return HasWord(name, kWords);
}

bool NamesArgument(std::string_view name) {
  constexpr std::string_view kWords[] = {
      "conc",     "concentration", "dose",     "depth",  "distance",  "position", "temperature",
      "pressure", "temp",          "age",      "height", "voltage",   "energy",   "potential",
      "day",      "days",          "week",     "month",  "hour",      "hours",    "angle",
      "length",   "step",          "altitude", "field",  "frequency", "z"};
  return HasWord(name, kWords) || NamesTime(name) || NamesScan(name);
}

bool NamesPeriod(std::string_view name) {
  constexpr std::string_view kWords[] = {"visit", "day", "days", "week", "month", "age", "hour"};
  return HasWord(name, kWords) || NamesTime(name);
}

}  // namespace tarnwick
