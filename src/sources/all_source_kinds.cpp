#include "sources/all_source_kinds.h"

namespace tarnwick {

SourceKinds AllSourceKinds() {
  return BasicSourceKinds();  // no kind of this layer yet
}

}  // namespace tarnwick
