// Long tables: rows that belong to one of several curves, which a column of texts names. Knows a source's columns and the
// DataSets read from it; knows no files.
#pragma once

#include "data/columns/column_roles.h"
#include "data/columns/import_source.h"
#include "data/import/import_file.h"

namespace tarnwick {

/// Where X rises in every row of each of a few kinds that a column of texts tells apart (but where it starts over, once in ten
/// rows at most), and not in the rows as they stand ("Entity,Year,Deaths"), or the kinds take turns while it does, makes a
/// DataSet of each kind that remembers which, and tells it. Reads at most a few hundred thousand rows to find out; longer tables
/// stay whole, and so does everything where each kind has but few rows. So are the blocks in which the first column stands still
/// (FindBlockParameter). True where DataSets were made.
bool SplitGroups(ImportResult& result, const ImportSource& source, const ChosenColumns& columns,
                 const LoadOptions& load, const SeriesFactory& make);

}  // namespace tarnwick
