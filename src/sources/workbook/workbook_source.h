// Workbooks as a kind of data source: a sheet becomes a text, and is judged, named and read as text tables are. Knows what the
// reader of workbooks answers; knows no cells.
#pragma once

#include <string>
#include <vector>

#include "data/import/source_kinds.h"

namespace tarnwick {

/// The row of the table of kinds.
SourceKind WorkbookKind();

/// The names of the sheets that have cells, in order. Throws as opening does.
std::vector<std::string> SheetsOf(const std::string& file, Progress& progress);

}  // namespace tarnwick
