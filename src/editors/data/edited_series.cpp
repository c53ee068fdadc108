#include "editors/data/edited_series.h"

#include <algorithm>

#include "graph/series_of_whole.h"

namespace tarnwick {

std::size_t EditedSeries::Place() const {
  const std::vector<TSeries*> whole = SeriesOfWhole(document_->WholeGraph());
  return static_cast<std::size_t>(std::ranges::find(whole, Get()) - whole.begin());
}

}  // namespace tarnwick
