// Rows of a stream as points of a DataSet: where they go, where its line breaks, which old points make room. Knows DataSets and
// rows; knows no stream and no window.
#pragma once

#include <cstddef>
#include <optional>

#include "sources/streams/row_stream.h"

namespace tarnwick {

class TDataSeries;

/// Which columns of a stream a DataSet's points are made of, by their place among the Y of its rows.
struct StreamColumns {
  std::size_t y = 0;
  std::optional<std::size_t> y_error = {};
  std::optional<std::size_t> x_error = {};
};

/// True when the source began anew within the rows: what a DataSet has until then is void.
inline bool BeginAnew(const StreamRows& rows) {
  return !rows.begins.empty();
}

/// Adds the rows, from where the source began anew last, with a break in the line at each place where it was away; rows without a
/// number for X or Y give none. Of more points than the description's KeepPoints (0: any number) the last to come stay. Throws
/// Error when no further point can be numbered.
void AppendRows(TDataSeries& series, const StreamRows& rows, const StreamColumns& columns);

/// Takes all points away. Their ids are not given out again.
void ForgetPoints(TDataSeries& series);

}  // namespace tarnwick
