// The rows of a view picked by a PostgreSQL server, in one query.
#pragma once

#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned().
ThinnedRows FetchThinnedOfPostgres(const ThinnedView& view, Progress& progress);

}  // namespace tarnwick
