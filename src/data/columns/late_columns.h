// Columns whose numbers begin far down, behind all rows that the guess looked at. Knows columns and blocks of rows; no DataSet.
#pragma once

#include "data/columns/import_source.h"

namespace tarnwick {

/// Takes columns that are empty in all rows looked at for columns of numbers where three numbers or more stand further down, and
/// next to nothing else. Reads a text no further than its first million rows, and only one that has such columns. What cannot be
/// read in blocks is left as it is.
void FindLateColumns(ImportSource& source);

}  // namespace tarnwick
