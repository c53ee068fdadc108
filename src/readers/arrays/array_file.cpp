#include "readers/arrays/array_file.h"

#include <algorithm>

#include "base/error.h"

namespace tarnwick {
namespace {

constexpr std::uint64_t kMostRows = std::uint64_t{200} << 20;

std::string Plain(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return text;
}

}  // namespace

std::vector<std::size_t> LongAxes(const std::vector<std::uint64_t>& lengths) {
  std::vector<std::size_t> axes;
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    if (lengths[i] != 1) axes.push_back(i);
  }
  if (axes.empty() && !lengths.empty()) axes.push_back(lengths.size() - 1);
  return axes;
}

ColumnAxes AxesOfColumn(const std::vector<std::uint64_t>& lengths, const ColumnPlace& place) {
  const std::vector<std::size_t> axes = LongAxes(lengths);
  if (axes.empty() || axes.size() > 2) {
    throw Error("The array \"" + place.path + "\" is no column and no table of columns");
  }
  const std::uint64_t columns = axes.size() == 2 ? lengths[axes[1]] : 1;
  if (place.column >= columns) {
    throw Error("The array \"" + place.path + "\" has " + std::to_string(columns) +
                " columns only");
  }
  const std::uint64_t rows = lengths[axes[0]];
  if ((place.rows == 0 || place.rows > kMostRows) && rows > kMostRows) {
    throw Error("The array \"" + place.path + "\" claims " + std::to_string(rows) +
                " values, more than can be read");
  }
  return {axes[0], axes.back()};
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
