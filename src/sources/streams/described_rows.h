// What the points of a DataSet are made of, as columns of a stream's rows: Y, and behind it the errors that the description
// names. Knows descriptions and rows; knows no stream.
#pragma once

#include <vector>

#include "data/import/loader.h"
#include "data/import/row_reading.h"
#include "sources/streams/append_rows.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

StreamColumns DescribedColumns(const TDSInfo& info);

/// Adds the point, whose X and Y are numbers.
void AddDescribedRow(const TDSInfo& info, const RowValues& point, StreamRows& rows);

/// The description without what says nothing of how rows are read.
TDSInfo ReadingOf(TDSInfo info);

/// Where the values of a row stand, and what becomes of them.
struct DescribedReading {
  RowColumns columns;
  ColumnTransforms transforms;
  std::vector<double> others;  ///< room for those of columns.others
};

/// Finds the columns that `info` names and writes their places into it, as the loader does. Throws Error for X or Y without a
/// column and for column expressions that cannot be used; columns of errors that are not there give none.
DescribedReading ResolveReading(TDSInfo& info, TDataSupplier& supplier);

/// Whether the rows of both are read alike, so that one stream serves both.
bool ReadAlike(const TDSInfo& one, const TDSInfo& other);

}  // namespace tarnwick
