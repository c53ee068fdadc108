#include "sources/all_source_kinds.h"

#include <vector>

#include "sources/arrays/array_source.h"
#include "sources/database/database_source.h"
#include "sources/lines/line_source.h"
#include "sources/links/link_source.h"
#include "sources/workbook/workbook_source.h"

namespace tarnwick {

namespace {

std::vector<SourceKind> KindsWith(FirstPicture picture) {
  std::vector<SourceKind> all = {DatabaseKind(picture), LinkKind(), LinesKind(), WorkbookKind(),
                                 ArraysKind()};
  const SourceKinds basic = BasicSourceKinds();
  all.insert(all.end(), basic.begin(), basic.end());
  return all;
}

}  // namespace

SourceKinds AllSourceKinds(FirstPicture picture) {
  static const std::vector<SourceKind> whole = KindsWith(FirstPicture::Whole);
  static const std::vector<SourceKind> coarse = KindsWith(FirstPicture::Coarse);
  return picture == FirstPicture::Coarse ? coarse : whole;
}

}  // namespace tarnwick
