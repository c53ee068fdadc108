#include "data/guess/data_block.h"

#include <algorithm>

#include "data/fields/text_fields.h"

namespace tarnwick {

std::optional<DataBlock> FindDataBlock(std::span<const std::string_view> lines) {
  const auto is = [](std::string_view word) {
    return [word](std::string_view line) { return TrimBlankBytes(line) == word; };
  };
  const auto begin = std::ranges::find_if(lines, is("BEGIN_DATA"));
  const auto end = std::find_if(begin, lines.end(), is("END_DATA"));
  if (end == lines.end() || end - begin < 2) return std::nullopt;
  return DataBlock{static_cast<std::size_t>(begin - lines.begin()) + 1,
                   static_cast<std::size_t>(end - lines.begin())};
}

}  // namespace tarnwick
