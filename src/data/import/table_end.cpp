#include "data/import/table_end.h"

#include "data/import/import_like.h"
#include "data/import/open_source.h"
#include "data/import/source_place.h"

namespace tarnwick {

TableEnd FindTableEnd(const TDataSeries& series, const LoadOptions& options) {
  NoProgress unseen;
  Progress& progress = options.progress != nullptr ? *options.progress : unseen;
  const TDataSeries* const one[] = {&series};
  const ImportSource source =
      OpenImportSource(SourcePlace(series.Source()), OptionsLike(one), options.kinds, progress);
  return {source.info.TableLines, source.left_out_from};
}

}  // namespace tarnwick
