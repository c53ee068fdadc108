// What a file of arrays tells of each of them. Knows the answer of the program that reads such files.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

/// Whether an array of two axes stands as the file has it, or with its axes changed for each other.
enum class AxisOrder { AsStored, Turned };

struct NamedArray {
  std::string path;    ///< "run/voltage"
  std::string member;  ///< of an array of records; else empty
  bool numbers = false;
  std::vector<std::int64_t> lengths;  ///< values along each axis that has more than one
  std::vector<std::string> axes;  ///< the array that gives each axis its values; empty: none does
  std::map<std::string, std::string> attributes;
  AxisOrder order = AxisOrder::AsStored;
  std::string line;  ///< "0,36,:" of one line through an array of more axes; else empty

  /// "run/table/voltage", "HGT[0,36,:]".
  std::string FullPath() const;
  std::string Attribute(const std::string& name) const;
};

/// Reads what the program lists.
std::vector<NamedArray> ParseArrayList(std::string_view list);

}  // namespace tarnwick
