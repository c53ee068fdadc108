#include "sources/all_source_kinds.h"

#include <vector>

#include "sources/arrays/array_source.h"
#include "sources/database/database_source.h"
#include "sources/lines/line_source.h"
#include "sources/links/link_source.h"
#include "sources/workbook/workbook_source.h"

namespace tarnwick {

SourceKinds AllSourceKinds() {
  static const std::vector<SourceKind> kinds = [] {
    std::vector<SourceKind> all = {DatabaseKind(), LinkKind(), LinesKind(), WorkbookKind(),
                                   ArraysKind()};
    const SourceKinds basic = BasicSourceKinds();
    all.insert(all.end(), basic.begin(), basic.end());
    return all;
  }();
  return kinds;
}

}  // namespace tarnwick
