// What the points of a DataSet are made of, as columns of a stream's rows: Y, and behind it the errors that the description
// names. Knows descriptions and rows; knows no stream.
#pragma once

#include "data/import/row_reading.h"
#include "sources/streams/append_rows.h"
#include "sources/streams/row_stream.h"

namespace tarnwick {

StreamColumns DescribedColumns(const TDSInfo& info);

/// Adds the point, whose X and Y are numbers.
void AddDescribedRow(const TDSInfo& info, const RowValues& point, StreamRows& rows);

/// The description without what says nothing of how rows are read.
TDSInfo ReadingOf(TDSInfo info);

/// Whether the rows of both are read alike, so that one stream serves both.
bool ReadAlike(const TDSInfo& one, const TDSInfo& other);

}  // namespace tarnwick
