#include "sources/stream_kinds.h"

#include <algorithm>

#include "base/error.h"

#include "sources/follow/follow_stream.h"
#include "sources/lines/line_source.h"
#include "sources/links/link_stream.h"

namespace tarnwick {

std::span<const StreamKind> StreamKinds() {
  static const StreamKind kinds[] = {FollowedFileKind(), LineStreamKind(), LinkStreamKind()};
  return kinds;
}

const StreamKind* StreamOf(const TDSInfo& info) {
  const std::span<const StreamKind> kinds = StreamKinds();
  const auto found = std::ranges::find_if(kinds, [&info](const StreamKind& kind) {
    return kind.kind == info.DataSource && kind.goes_on(info);
  });
  return found == kinds.end() ? nullptr : &*found;
}

TDSInfo BeginStream(const TDSInfo& place) {
  const std::span<const StreamKind> kinds = StreamKinds();
  const auto found = std::ranges::find(kinds, place.DataSource, &StreamKind::kind);
  if (found == kinds.end() || found->begin == nullptr)
    throw Error("No source of this kind is opened by its place");
  return found->begin(place);
}

}  // namespace tarnwick
