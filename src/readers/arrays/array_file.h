// Files of named arrays: what is in them, and columns of numbers out of them. Knows arrays; knows no table.
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/error.h"

namespace tarnwick {

/// The attributes that say what an array holds.
inline constexpr std::array<const char*, 10> kToldAttributes = {
    "units",        "calendar",   "long_name", "_FillValue",  "missing_value",
    "scale_factor", "add_offset", "bounds",    "climatology", "coordinates"};

/// One array, or one member of an array of records.
struct ArrayInfo {
  std::string path;    ///< "run/voltage"
  std::string member;  ///< empty: the array is none of records
  bool numbers = false;
  /// Values along each axis; axes of one value are left out, but for the last of only such ones.
  std::vector<std::uint64_t> lengths;
  std::vector<std::string> axes;  ///< the path of each axis; empty where it has none
  std::vector<std::pair<std::string, std::string>> attributes;  ///< numbers with blanks between
};

/// The values of an array along one of its axes, at one place of each other.
struct ColumnPlace {
  std::string path;
  std::string member;
  /// ":" for the axis that the values lie along and a number from 0 for each other, "," between: "0,36,:". Axes of one value
  /// are left out, as in ArrayInfo.
  std::string line;
  std::uint64_t rows = 0;  ///< the first of them; 0: all
};

class ArrayFile {
 public:
  virtual ~ArrayFile() = default;
  ArrayFile(const ArrayFile&) = delete;
  ArrayFile& operator=(const ArrayFile&) = delete;

  /// All but those that stand in other files. Throws Error.
  virtual std::vector<ArrayInfo> Arrays() = 0;
  /// Throws Error for what is not there, no numbers, damaged, or too long.
  virtual std::vector<double> Column(const ColumnPlace& place) = 0;

 protected:
  ArrayFile() = default;
};

/// Throw Error for what is no such file, damaged or cut short.
std::unique_ptr<ArrayFile> OpenHdf5(const std::string& file);
std::unique_ptr<ArrayFile> OpenNetcdf(const std::string& file);

/// Where a column lies in an array.
struct ColumnLine {
  std::size_t axis = 0;              ///< that its values lie along
  std::uint64_t rows = 0;            ///< how many of them are wanted
  std::vector<std::uint64_t> start;  ///< its first value, a place on each axis
};

/// For an array whose shape was given with more axes than can be told.
Error TooManyAxes(const ColumnPlace& place);

/// The axes with more than one value, in order; of none the last one.
std::vector<std::size_t> LongAxes(const std::vector<std::uint64_t>& lengths);
/// Throws Error, naming the array, for a line that does not fit it and for a length beyond what can be read.
ColumnLine LineOfColumn(const std::vector<std::uint64_t>& lengths, const ColumnPlace& place);

/// Lines "array<tab>PATH<tab>MEMBER<tab>numbers|other" and behind it "<tab>LENGTH<tab>AXIS" for each axis, each followed by lines
/// "attribute<tab>NAME<tab>VALUE".
std::string ListOf(ArrayFile& file);

}  // namespace tarnwick
