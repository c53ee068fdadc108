#include "base/zone_place.h"

#include <algorithm>

#include "base/ascii.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostNames = 3;

bool IsOfName(char c) {
  return IsLetter(c) || IsDigit(c) || c == '_' || c == '-' || c == '+';
}

template <class Is>
std::size_t LengthOfRun(std::string_view text, Is is) {
  return static_cast<std::size_t>(std::ranges::find_if_not(text, is) - text.begin());
}

}  // namespace

std::size_t LengthOfZonePlace(std::string_view text) {
  if (text.starts_with('[')) {
    const std::size_t inside = LengthOfZonePlace(text.substr(1));
    return inside > 0 && text.substr(inside + 1).starts_with(']') ? inside + 2 : 0;
  }
  std::size_t length = LengthOfRun(text, &IsLetter);
  std::size_t names = length > 1 ? 1 : 0;
  while (names > 0 && names < kMostNames && text.substr(length).starts_with('/')) {
    const std::size_t name = LengthOfRun(text.substr(length + 1), &IsOfName);
    if (name == 0) return 0;
    length += name + 1;
    ++names;
  }
  return names > 1 ? length : 0;
}

std::string_view ZonePlaceAtEnd(std::string_view text) {
  const std::size_t before = text.find_last_of(" [");
  if (before == text.npos) return {};
  std::string_view place = text.substr(before + 1);
  if (text[before] == '[' && place.ends_with(']')) place.remove_suffix(1);
  return !place.empty() && LengthOfZonePlace(place) == place.size() ? place : std::string_view();
}

}  // namespace tarnwick
