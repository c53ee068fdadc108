// Data bases as a kind of data source: the first look at one, and opening it again. Knows suppliers and descriptions; knows
// no DataSet.
#pragma once

#include <string_view>

#include "data/import/import_source.h"
#include "sources/database/database_place.h"

namespace tarnwick {

/// The row of the table of kinds.
SourceKind DatabaseKind();

/// True for DataSets whose rows the data base picks by what a view shows; only where every row is asked for.
bool IsThinned(const TDSInfo& info);

/// Opens a data base for the first time and judges the columns of the table or query that `place` names, else of its first
/// table with numbers, which is told. Throws Error for options that cannot be used and for what cannot be opened or read,
/// and UnpackingCancelled.
ImportSource OpenDatabase(const DatabasePlace& place, const ImportOptions& options,
                          Progress& progress);

}  // namespace tarnwick
