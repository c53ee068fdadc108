// A text that says itself where its data stand: "BEGIN_DATA" to "END_DATA". Knows lines; knows no fields.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

namespace tarnwick {

/// Lines [first, behind) of those searched.
struct DataBlock {
  std::size_t first = 0;
  std::size_t behind = 0;
};

/// What stands between a line "BEGIN_DATA" and the next "END_DATA"; nothing where one of them is missing, or nothing between.
std::optional<DataBlock> FindDataBlock(std::span<const std::string_view> lines);

}  // namespace tarnwick
