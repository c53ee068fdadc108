// Data bases as a kind of data source: the first look at one, and opening it again. Knows suppliers and descriptions; knows
// no DataSet.
#pragma once

#include <string>
#include <string_view>

#include "data/import/source_kinds.h"
#include "sources/database/database_place.h"
#include "sources/database/first_picture.h"
#include "sources/database/thinned_view.h"

namespace tarnwick {

/// The row of the table of kinds.
SourceKind DatabaseKind(FirstPicture picture = FirstPicture::Whole);

/// True for DataSets whose rows the data base picks by what a view shows; only where every row is asked for.
bool IsThinned(const TDSInfo& info);

/// True for thinned DataSets of which only some rows from all over the table were read yet: about one in RowSamplingFrequency.
bool IsCoarse(const TDSInfo& info);

/// True for thinned DataSets whose points are X and Y of rows and nothing more, so that other rows can take their place.
bool ShowsRowsAsTheyAre(const TDSInfo& info);

/// What a thinned DataSet shows of its table.
ThinnedView WholeViewOf(const TDSInfo& info);

/// DatabasePlace::Title of what the description reads; empty for other sources.
std::string TitleOfTable(const TDSInfo& info);

/// Opens a data base for the first time and judges the columns of the table or query that `place` names, else of its first
/// table with numbers, which is told. Throws Error for options that cannot be used and for what cannot be opened or read,
/// and UnpackingCancelled.
ImportSource OpenDatabase(const DatabasePlace& place, const ImportOptions& options,
                          Progress& progress, FirstPicture picture = FirstPicture::Whole);

}  // namespace tarnwick
