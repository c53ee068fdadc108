// The rows of a view picked by a server of MySQL or MariaDB, in one query.
#pragma once

#include "sources/database/thinned_view.h"

namespace tarnwick {

/// As FetchThinned().
ThinnedRows FetchThinnedOfMysql(const ThinnedView& view, Progress& progress);

}  // namespace tarnwick
