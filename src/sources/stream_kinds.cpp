#include "sources/stream_kinds.h"

#include <algorithm>

#include "sources/follow/follow_stream.h"
#include "sources/lines/line_source.h"

namespace tarnwick {

std::span<const StreamKind> StreamKinds() {
  static const StreamKind kinds[] = {FollowedFileKind(), LineStreamKind()};
  return kinds;
}

const StreamKind* StreamOf(const TDSInfo& info) {
  const std::span<const StreamKind> kinds = StreamKinds();
  const auto found = std::ranges::find_if(kinds, [&info](const StreamKind& kind) {
    return kind.kind == info.DataSource && kind.goes_on(info);
  });
  return found == kinds.end() ? nullptr : &*found;
}

}  // namespace tarnwick
