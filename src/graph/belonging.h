// Which DataSets are there for another one. Knows styles.
#pragma once

#include "graph/series.h"

namespace tarnwick {

/// True for a band, for residuals and for a part of a model: it looks as what made it chose.
inline bool BelongsToAnother(const TSeries& series) {
  return !series.Style().selectable || series.Style().show_in_legend == 0;
}

}  // namespace tarnwick
