// What a fit took from a DataSet, told from anything else that it could have taken by one number. Knows DataSets; no fit.
#pragma once

#include "data/series/data_series.h"
#include "fit/model/fit_record.h"

namespace tarnwick {

/// Of X and Y of all points in their order, base line, errors of Y where there are some, and the settings of a regression
/// whose curve stands in for the points. Not of ids: it is the same when the points were written and read. One pass over the
/// points.
PointsMark MarkOf(const TDataSeries& series);

}  // namespace tarnwick
