#include "readers/arrays/array_file.h"

#include <algorithm>
#include <charconv>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::uint64_t kMostRows = std::uint64_t{200} << 20;
constexpr const char* kAlong = ":";  // stands for the axis of the rows

std::string Plain(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

std::vector<std::string> PlacesOf(const std::string& line) {
  std::vector<std::string> places(1);
  for (const char c : line) {
    if (c == ',') {
      places.emplace_back();
    } else {
      places.back() += c;
    }
  }
  return places;
}

Error DoesNotFit(const ColumnPlace& place) {
  return Error("The array \"" + place.path + "\" has no line [" + place.line + ']');
}

}  // namespace

Error TooManyAxes(const ColumnPlace& place) {
  return Error("The array \"" + place.path + "\" has more axes than can be read");
}

std::vector<std::size_t> LongAxes(const std::vector<std::uint64_t>& lengths) {
  std::vector<std::size_t> axes;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (lengths[i] != 1) axes.push_back(i);
  }
  if (axes.empty() && !lengths.empty()) axes.push_back(lengths.size() - 1);
  return axes;
}

ColumnLine LineOfColumn(const std::vector<std::uint64_t>& lengths, const ColumnPlace& place) {
  const std::vector<std::size_t> axes = LongAxes(lengths);
  const std::vector<std::string> places = PlacesOf(place.line);
  const bool one_axis = std::ranges::count(places, kAlong) == 1;
  if (!one_axis || places.size() != axes.size()) throw DoesNotFit(place);
  ColumnLine line{.start = std::vector<std::uint64_t>(lengths.size(), 0)};
  for (std::size_t i = 0; i < axes.size(); ++i) {
    if (places[i] == kAlong) {
      line.axis = axes[i];
      continue;
    }
    const std::string& text = places[i];
    std::uint64_t& start = line.start[axes[i]];
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), start);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    if (!whole || start >= lengths[axes[i]]) throw DoesNotFit(place);
  }
  const std::uint64_t rows = lengths[line.axis];
  if ((place.rows == 0 || place.rows > kMostRows) && rows > kMostRows) {
    throw Error("The array \"" + place.path + "\" claims " + std::to_string(rows) +
                " values, more than can be read");
  }
  line.rows = place.rows == 0 ? rows : std::min(place.rows, rows);
  return line;
}

std::string ListOf(ArrayFile& file) {
  std::string list;
  for (const ArrayInfo& array : file.Arrays()) {
    list +=
        "array\t" + array.path + '\t' + array.member + (array.numbers ? "\tnumbers" : "\tother");
    for (std::size_t i = 0; i < array.lengths.size(); ++i) {
      list += '\t' + std::to_string(array.lengths[i]) + '\t' + Plain(array.axes[i]);
    }
    list += '\n';
    for (const auto& [name, value] : array.attributes) {
      list += "attribute\t" + name + '\t' + Plain(value) + '\n';
    }
  }
  return list;
}

}  // namespace tarnwick
