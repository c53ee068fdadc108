#include "data/names/argument_names.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "base/text_encoding.h"
#include "data/names/name_words.h"

namespace tarnwick {
namespace {

/// What stands before one of these words at the end of a name, its unit apart; none where it ends otherwise.
std::optional<std::string> StemBefore(std::string_view name,
                                      std::span<const std::string_view> ends) {
  std::string text;
  for (const std::string& word : WordsOf(name.substr(0, name.find_first_of("[(")))) text += word;
  for (const std::string_view end : ends) {
    if (text.ends_with(end)) return text.substr(0, text.size() - end.size());
  }
  return std::nullopt;
}

constexpr std::string_view kLongitudes[] = {"longitude", "long", "lon", "lng"};
constexpr std::string_view kLatitudes[] = {"latitude", "lat"};

}  // namespace

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

bool NamesLongitude(std::string_view name) {
  return StemBefore(name, kLongitudes).has_value();
}

bool NameCoordinates(std::string_view one, std::string_view other) {
  if (!NamesLongitude(one)) std::swap(one, other);
  const std::optional<std::string> east = StemBefore(one, kLongitudes);
  return east && east == StemBefore(other, kLatitudes);
}

}  // namespace tarnwick
