// Tables that say themselves from which byte to which each column goes, as the catalogues of astronomers do:
//   Bytes Format Units Label Explanations
//    1-  4 I4    ---   HD    Number of the star
// Knows such descriptions; knows no rows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace tarnwick {

struct DescribedColumn {
  std::int32_t begin = 0;  ///< bytes [begin, end) from 0
  std::int32_t end = 0;
  bool is_number = false;
  std::string_view unit;  ///< empty for none
  std::string_view name;
};

/// A description and where it stands.
struct ByteDescription {
  std::size_t line = 0;    ///< of its heading, from 0
  std::size_t behind = 0;  ///< the line behind the last rule below it: the first that may be a row
  std::vector<DescribedColumn> columns;  ///< rising, without those that lie within another
};

/// The first description among the lines that has two columns and more.
std::optional<ByteDescription> FindByteDescription(std::span<const std::string_view> lines);

}  // namespace tarnwick
