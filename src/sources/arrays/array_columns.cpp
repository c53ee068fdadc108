#include "sources/arrays/array_columns.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <tuple>
#include <utility>

#include "base/error.h"
#include "base/number_text.h"
#include "base/word_list.h"
#include "data/block_source.h"
#include "sources/arrays/array_lines.h"
#include "sources/arrays/array_roles.h"
#include "sources/arrays/time_units.h"

namespace tarnwick {
namespace {

constexpr std::int64_t kMostRows = std::int64_t{200} << 20;
constexpr std::int64_t kMostUnasked = 64;              // columns of an array that nobody named
constexpr std::int64_t kMostAsked = 1000;              // of one that the user names
constexpr std::size_t kMostNames = 5;                  // in a sentence
constexpr std::size_t kMostNameBytes = 60;             // a longer description is no name
constexpr float kUnwritten = 9.9692099683868690e+36F;  // stands where nothing was written

bool HasColumns(const NamedArray& array, std::int64_t most_columns) {
  const bool table = array.lengths.size() == 2 && array.lengths[1] <= most_columns;
  return array.numbers && (array.lengths.size() == 1 || table);
}

/// How long a column of the array is; nothing where it makes none.
std::optional<std::int64_t> RowsOf(const NamedArray& array, std::int64_t most_columns) {
  if (!HasColumns(array, most_columns)) return std::nullopt;
  const std::int64_t rows = array.lengths.front();
  if (rows < 1 || rows > kMostRows) return std::nullopt;
  return rows;
}

bool IsTooLong(const NamedArray& array) {
  return HasColumns(array, kMostUnasked) && array.lengths.front() > kMostRows;
}

/// Arrays along one axis belong together, whatever others are as long by chance.
struct Length {
  std::int64_t rows = 0;
  std::string axis;
  bool operator==(const Length&) const = default;
  bool operator<(const Length& other) const {
    return std::tie(rows, axis) < std::tie(other.rows, other.axis);
  }
};
using Arrays = std::vector<const NamedArray*>;

std::string ListOf(const Arrays& arrays) {
  std::vector<std::string> names;
  for (const NamedArray* const array : arrays) names.push_back('"' + array->FullPath() + '"');
  return Listed(names, kMostNames);
}

std::string Shape(const NamedArray& array) {
  return '"' + array.FullPath() + "\" (" + ShapeText(array) +
         (array.numbers ? ")" : ", no numbers)");
}

FileError TooLong(const std::string& file, const std::string& shapes) {
  return {"A column of numbers is too long: up to " + std::to_string(kMostRows) +
              " values of one are read",
          file, shapes};
}

[[noreturn]] void RefuseAll(std::span<const NamedArray> arrays, const std::string& file) {
  if (arrays.empty()) throw FileError("The file holds no arrays", file, "");
  std::vector<std::string> shapes;
  for (const NamedArray& array : arrays) shapes.push_back(Shape(array));
  const std::string held = "it holds " + Listed(shapes, kMostNames);
  if (std::ranges::any_of(arrays, &IsTooLong)) throw TooLong(file, held);
  throw FileError("No array of the file is a column of numbers", file, held);
}

/// Arrays of numbers with more axes or columns than a table has.
Arrays BlocksOf(std::span<const NamedArray> arrays, const ArrayRoles& roles) {
  Arrays blocks;
  for (const NamedArray& array : arrays) {
    const bool block = array.lengths.size() > 1 && !HasColumns(array, kMostUnasked);
    if (array.numbers && block && !roles.IsBounds(array)) blocks.push_back(&array);
  }
  return blocks;
}

std::string ShapesOf(const Arrays& blocks, std::span<const NamedArray> arrays) {
  std::vector<std::string> shapes;
  for (const NamedArray* const array : blocks) shapes.push_back(Shape(*array));
  return Listed(shapes, kMostNames) + " (--array \"" + LineThrough(*blocks.front(), arrays) +
         "\" reads a line of it)";
}

/// Blocks are told; where all that is left says where they were measured, nothing was measured in it.
void TellBlocks(std::span<const NamedArray> arrays, const ArrayRoles& roles, const Arrays& chosen,
                const std::string& file, std::vector<std::string>& notes) {
  const Arrays blocks = BlocksOf(arrays, roles);
  if (blocks.empty()) return;
  if (std::ranges::none_of(chosen,
                           [&](const NamedArray* array) { return roles.IsMeasured(*array); })) {
    throw FileError("What the file holds has more than two axes or 64 columns, which is no table",
                    file, ShapesOf(blocks, arrays));
  }
  notes.push_back("not read, with more than two axes or 64 columns: " + ShapesOf(blocks, arrays));
}

/// The arrays of that length which most that were measured have, and a word about the others.
Arrays MostOfOneLength(std::span<const NamedArray> arrays, const std::string& file,
                       std::vector<std::string>& notes) {
  const ArrayRoles roles = RolesOf(arrays);
  std::map<Length, Arrays> by_length;
  for (const NamedArray& array : arrays) {
    if (roles.IsBounds(array)) continue;
    const std::optional<std::int64_t> rows = RowsOf(array, kMostUnasked);
    if (rows) by_length[{*rows, array.axes.front()}].push_back(&array);
  }
  if (by_length.empty()) RefuseAll(arrays, file);
  const auto rank = [&](const auto& of) {
    const auto& [length, members] = of;
    const auto measured = std::ranges::count_if(
        members, [&](const NamedArray* array) { return roles.IsMeasured(*array); });
    return length.rows > 1 ? std::tuple(measured, members.size(), length.rows)
                           : std::tuple(std::ptrdiff_t{0}, std::size_t{0}, length.rows);
  };
  const auto fewer = [&](const auto& one, const auto& other) { return rank(one) < rank(other); };
  const auto most = std::ranges::max_element(by_length, fewer);
  // What only numbers the columns of a chosen array is no table of its own.
  const auto numbers_columns = [&](const NamedArray* array) {
    return std::ranges::any_of(most->second, [&](const NamedArray* chosen) {
      return chosen->axes.size() == 2 && chosen->axes[1] == array->path;
    });
  };
  Arrays others;
  for (const auto& [length, members] : by_length) {
    if (length == most->first || length.rows == 1) continue;
    std::ranges::remove_copy_if(members, std::back_inserter(others), numbers_columns);
  }
  if (!others.empty()) {
    notes.push_back("the arrays of " + Counted(most->first.rows, "value") + ", " +
                    ListOf(most->second) + ", are shown, beside them " +
                    (others.size() == 1 ? "is " : "are ") + ListOf(others) +
                    " (--array names others)");
  }
  TellBlocks(arrays, roles, most->second, file, notes);
  return most->second;
}

std::string_view WithoutSlashes(std::string_view path) {
  while (path.starts_with('/')) path.remove_prefix(1);
  while (path.ends_with('/')) path.remove_suffix(1);
  return path;
}

/// Those that bear the path or lie in it; else those whose path ends so.
Arrays Named(std::span<const NamedArray> arrays, std::string_view asked) {
  const std::string path(WithoutSlashes(asked));
  Arrays found;
  for (const NamedArray& array : arrays) {
    const std::string full = array.FullPath();
    if (full == path || full.starts_with(path + '/')) found.push_back(&array);
  }
  if (!found.empty()) return found;
  const std::string line = PlainLine(path);
  for (const NamedArray& array : arrays) {
    const std::string full = array.FullPath();
    if (full.ends_with('/' + path) || full == line || full.ends_with('/' + line)) {
      found.push_back(&array);
    }
  }
  return found;
}

std::string Refused(const NamedArray& array, std::span<const NamedArray> arrays) {
  const bool block = array.numbers && array.lengths.size() > 1;
  return block ? ShapesOf({&array}, arrays) : Shape(array);
}

/// `named` without the bounds of coordinates, unless there is nothing else.
Arrays WithoutBounds(const Arrays& named, const ArrayRoles& roles) {
  Arrays others;
  std::ranges::copy_if(named, std::back_inserter(others),
                       [&](const NamedArray* array) { return !roles.IsBounds(*array); });
  return others.empty() ? named : others;
}

Arrays AskedFor(std::span<const NamedArray> arrays, std::span<const std::string> asked,
                const std::string& file) {
  const ArrayRoles roles = RolesOf(arrays);
  Arrays chosen;
  for (const std::string& path : asked) {
    const Arrays named = WithoutBounds(Named(arrays, path), roles);
    if (named.empty()) {
      std::vector<std::string> known;
      for (const NamedArray& array : arrays) known.push_back(Shape(array));
      throw FileError("There is no array \"" + path + '"', file,
                      "arrays: " + Listed(known, kMostNames));
    }
    Arrays columns;
    std::ranges::copy_if(named, std::back_inserter(columns), [](const NamedArray* array) {
      return RowsOf(*array, kMostAsked).has_value();
    });
    if (columns.empty()) {
      if (IsTooLong(*named.front())) throw TooLong(file, Shape(*named.front()));
      throw FileError("The array is no column of numbers and no table of columns", file,
                      Refused(*named.front(), arrays));
    }
    for (const NamedArray* const array : columns) {
      if (std::ranges::find(chosen, array) == chosen.end()) chosen.push_back(array);
    }
  }
  for (const NamedArray* const array : chosen) {
    if (array->lengths.front() != chosen.front()->lengths.front()) {
      throw FileError("The arrays are not of one length", file,
                      Shape(*chosen.front()) + " and " + Shape(*array));
    }
  }
  return chosen;
}

/// The array that gives the axis its values stands first; it comes along where it is not asked for.
void PutAxisFirst(std::span<const NamedArray> arrays, Arrays& chosen) {
  const std::string& axis = chosen.front()->axes.front();
  if (axis.empty()) return;
  const auto found = std::ranges::find_if(arrays, [&](const NamedArray& array) {
    return array.path == axis && array.member.empty() && array.lengths.size() == 1 &&
           array.numbers && array.lengths.front() == chosen.front()->lengths.front();
  });
  if (found == arrays.end()) return;
  std::erase(chosen, &*found);
  chosen.insert(chosen.begin(), &*found);
}

/// Numbers with blanks between.
std::vector<double> Numbers(std::string_view text) {
  std::vector<double> numbers;
  while (!(text = TrimBlanks(text)).empty()) {
    const std::size_t blank = std::min(text.find(' '), text.size());
    if (const auto number = ParseNumber(text.substr(0, blank))) numbers.push_back(*number);
    text.remove_prefix(blank);
  }
  return numbers;
}

double FirstNumber(const std::string& text, double otherwise) {
  const std::vector<double> numbers = Numbers(text);
  return numbers.empty() || !std::isfinite(numbers.front()) ? otherwise : numbers.front();
}

StoredMeaning MeaningOf(const NamedArray& array, std::vector<std::string>& notes) {
  StoredMeaning meaning;
  meaning.scale = FirstNumber(array.Attribute("scale_factor"), 1);
  meaning.offset = FirstNumber(array.Attribute("add_offset"), 0);
  meaning.missing = Numbers(array.Attribute("missing_value"));
  const std::vector<double> fill = Numbers(array.Attribute("_FillValue"));
  meaning.missing.insert(meaning.missing.end(), fill.begin(), fill.end());
  meaning.missing.push_back(static_cast<double>(kUnwritten));
  const std::optional<CountedTime> time = ParseCountedTime(array.Attribute("units"));
  if (!time) return meaning;
  if (!IsCommonCalendar(array.Attribute("calendar"))) {
    notes.push_back('"' + array.FullPath() + "\" counts in the calendar \"" +
                    array.Attribute("calendar") + "\" and is left as it stands");
    return meaning;
  }
  meaning.is_date = true;
  meaning.scale *= time->days;
  meaning.offset = meaning.offset * time->days + time->day;
  return meaning;
}

/// The last part of a path, or the longer name that the array has, with its unit.
std::string NameOf(const NamedArray& array, const StoredMeaning& meaning,
                   const std::string& place) {
  const std::string full = array.FullPath();
  const std::string described = array.Attribute("long_name");
  const bool named = !described.empty() && described.size() <= kMostNameBytes;
  const std::string line = array.line.empty() ? "" : '[' + array.line + ']';
  std::string name = (named ? described + line : full.substr(full.rfind('/') + 1)) + place;
  const std::string units = array.Attribute("units");
  if (!units.empty() && units != "1" && !meaning.is_date) name += " [" + units + ']';
  return name;
}

void AddColumns(const NamedArray& array, ArrayTable& table) {
  const StoredMeaning meaning = MeaningOf(array, table.notes);
  const std::int64_t count = array.lengths.size() == 2 ? array.lengths[1] : 1;
  for (std::int64_t i = 0; i < count; ++i) {
    const std::string place = count == 1 ? std::string() : '[' + std::to_string(i) + ']';
    table.columns.push_back({array.path, array.member, LineOf(array, i), array.FullPath() + place,
                             NameOf(array, meaning, place), meaning});
  }
  table.read.push_back(array.FullPath());
}

/// Where several have one name, all of them are called by their paths.
void TellNamesApart(std::vector<ArrayColumn>& columns) {
  std::map<std::string, int> counts;
  for (const ArrayColumn& column : columns) ++counts[column.name];
  for (ArrayColumn& column : columns) {
    if (counts[column.name] > 1) column.name = column.full_path;
  }
}

}  // namespace

double StoredMeaning::ValueOf(double stored) const {
  if (std::ranges::find(missing, stored) != missing.end()) return kMissingValue;
  const double value = stored * scale + offset;
  if (std::isfinite(value)) return value;
  const bool told =
      std::isnan(stored) && std::ranges::any_of(missing, [](double m) { return std::isnan(m); });
  return told ? kMissingValue : kNotNumberValue;
}

ArrayTable ChooseArrays(std::span<const NamedArray> stored, std::span<const std::string> asked,
                        const std::string& file) {
  const std::vector<NamedArray> arrays = WithRowsAlongLines(stored, asked, file);
  ArrayTable table;
  Arrays chosen =
      asked.empty() ? MostOfOneLength(arrays, file, table.notes) : AskedFor(arrays, asked, file);
  PutAxisFirst(arrays, chosen);
  for (const NamedArray* const array : chosen) AddColumns(*array, table);
  TellNamesApart(table.columns);
  table.rows = chosen.front()->lengths.front();
  return table;
}

}  // namespace tarnwick
