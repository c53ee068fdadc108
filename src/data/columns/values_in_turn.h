// Rows that hold curves along the line, several values a line, as spectrum analysers and seismographs write them. Knows the
// columns of a source and their first values.
#pragma once

#include "data/columns/import_source.h"

namespace tarnwick {

enum class ValuesInTurn {
  No,
  Likely,  ///< worth a word
  Sure     ///< the rows are to be turned
};

/// Whether the columns, without names, are one curve that goes on from line to line: behind an address that rises by as many as
/// there are values on a line (likely), or since the last value of a line is as near to the first of the next as values on a
/// line are to each other, but values below each other are not. One long row, or a few very long ones, are curves too (sure), one
/// also where its names differ by their numbers only.
ValuesInTurn HoldsValuesInTurn(const ImportSource& source);

}  // namespace tarnwick
