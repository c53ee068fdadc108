#include "graph/turning_back.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace tarnwick {

bool TurnsBack(const TSeries& series) {
  if (series.Style().line_order != LineOrder::AsTheyCame) return false;
  bool later = false, earlier = false;
  std::optional<std::int32_t> last;
  series.Points().ForEachChunk([&](const ChunkView& view) {
    for (std::size_t i = 0; i < view.x.size(); ++i) {
      const std::int32_t id = view.chunk->Id(i);
      later = later || (last && id > *last);
      earlier = earlier || (last && id < *last);
      last = id;
    }
  });
  return later && earlier;
}

}  // namespace tarnwick
