#include "sources/arrays/array_lines.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "sources/arrays/time_units.h"

namespace tarnwick {
namespace {

constexpr std::string_view kAlong = ":";

struct AskedLine {
  std::string path;
  std::vector<std::string> places;  // on each axis, without blanks
};

/// Nothing for what names no line.
std::optional<AskedLine> ParseLine(std::string_view asked) {
  asked = TrimBlanks(asked);
  const std::size_t bracket = asked.rfind('[');
  if (bracket == asked.npos || !asked.ends_with(']')) return std::nullopt;
  AskedLine line{std::string(TrimBlanks(asked.substr(0, bracket))), {}};
  std::string_view inside = asked.substr(bracket + 1, asked.size() - bracket - 2);
  while (true) {
    const std::size_t end = std::min(inside.find(','), inside.size());
    line.places.emplace_back(TrimBlanks(inside.substr(0, end)));
    if (end == inside.size()) return line;
    inside.remove_prefix(end + 1);
  }
}

bool IsPlace(const std::string& text, std::int64_t length) {
  std::int64_t place = -1;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), place);
  return error == std::errc() && end == text.data() + text.size() && place >= 0 && place < length;
}

NamedArray Line(const NamedArray& array, const AskedLine& asked, const std::string& file) {
  const auto along = std::ranges::find(asked.places, kAlong);
  bool fits = asked.places.size() == array.lengths.size() && array.numbers &&
              std::ranges::count(asked.places, kAlong) == 1;
  for (std::size_t i = 0; fits && i < asked.places.size(); ++i) {
    fits = asked.places[i] == kAlong || IsPlace(asked.places[i], array.lengths[i]);
  }
  if (!fits) {
    throw FileError(
        "A line names a place on each axis, counted from 0, and \":\" on that of the rows", file,
        '"' + array.FullPath() + "\" (" + ShapeText(array) + ')');
  }
  NamedArray line = array;
  const auto axis = static_cast<std::size_t>(along - asked.places.begin());
  line.lengths = {array.lengths[axis]};
  line.axes = {array.axes[axis]};
  line.line = Joined(asked.places, ",");
  return line;
}

bool IsNamed(const NamedArray& array, std::string_view path) {
  const std::string full = array.FullPath();
  return full == path || full.ends_with('/' + std::string(path));
}

}  // namespace

bool CountsTime(std::span<const NamedArray> arrays, const std::string& axis) {
  return !axis.empty() && std::ranges::any_of(arrays, [&](const NamedArray& array) {
    return array.path == axis && ParseCountedTime(array.Attribute("units")).has_value();
  });
}

std::vector<NamedArray> WithRowsAlongLines(std::span<const NamedArray> arrays,
                                           std::span<const std::string> asked,
                                           const std::string& file) {
  std::vector<NamedArray> turned(arrays.begin(), arrays.end());
  for (NamedArray& array : turned) {
    if (array.lengths.size() != 2 || CountsTime(arrays, array.axes[0])) continue;
    if (!CountsTime(arrays, array.axes[1])) continue;
    std::swap(array.lengths[0], array.lengths[1]);
    std::swap(array.axes[0], array.axes[1]);
    array.order = AxisOrder::Turned;
  }
  for (const std::string& text : asked) {
    const bool is_a_name =
        std::ranges::any_of(arrays, [&](const NamedArray& array) { return IsNamed(array, text); });
    const std::optional<AskedLine> line = is_a_name ? std::nullopt : ParseLine(text);
    if (!line) continue;
    const auto through = std::ranges::find_if(
        arrays, [&](const NamedArray& array) { return IsNamed(array, line->path); });
    if (through != arrays.end()) turned.push_back(Line(*through, *line, file));
  }
  return turned;
}

std::string LineOf(const NamedArray& array, std::int64_t column) {
  if (!array.line.empty()) return array.line;
  if (array.lengths.size() < 2) return std::string(kAlong);
  const std::string place = std::to_string(column);
  return array.order == AxisOrder::Turned ? place + ",:" : ":," + place;
}

std::string LineThrough(const NamedArray& array, std::span<const NamedArray> arrays) {
  std::vector<std::string> places(array.lengths.size(), "0");
  const auto time = std::ranges::find_if(
      array.axes, [&](const std::string& axis) { return CountsTime(arrays, axis); });
  const std::size_t otherwise = places.size() == 2 ? 0 : places.size() - 1;
  const std::size_t along =
      time == array.axes.end() ? otherwise : static_cast<std::size_t>(time - array.axes.begin());
  if (!places.empty()) places[along] = kAlong;
  if (array.order == AxisOrder::Turned) std::ranges::reverse(places);
  return array.FullPath() + '[' + Joined(places, ",") + ']';
}

std::string PlainLine(std::string_view asked) {
  const std::optional<AskedLine> line = ParseLine(asked);
  return line ? line->path + '[' + Joined(line->places, ",") + ']' : std::string(TrimBlanks(asked));
}

std::string_view WithoutLine(std::string_view asked) {
  asked = TrimBlanks(asked);
  const std::size_t bracket = asked.rfind('[');
  const bool line = bracket != asked.npos && asked.ends_with(']');
  return line ? TrimBlanks(asked.substr(0, bracket)) : asked;
}

std::string ShapeText(const NamedArray& array) {
  std::vector<std::int64_t> lengths = array.lengths;
  if (array.order == AxisOrder::Turned) std::ranges::reverse(lengths);
  std::string shape;
  for (const std::int64_t length : lengths) {
    shape += (shape.empty() ? "" : " × ") + std::to_string(length);
  }
  return shape.empty() ? "1" : shape;
}

}  // namespace tarnwick
