#include "sources/readers/part_of_file.h"

#include "data/import/open_source.h"
#include "data/import/source_place.h"

namespace tarnwick {

ImportSource OpenPartOfFile(const SourceKind& kind, const TDSInfo& place, ImportOptions options,
                            Progress& progress) {
  options.table_part = place.TablePart;
  return OpenImportSource(SourcePlace(place), options, SourceKinds(&kind, 1), progress);
}

}  // namespace tarnwick
