// What a model leaves of a DataSet, as a new DataSet. Knows DataSets and models; runs no fit.
#pragma once

#include "data/series/data_series.h"

namespace tarnwick {

/// Clears `target` and fills it with Y less base line and model at every point between the model's margins, thinned by
/// nothing; its columns are named after the source's, Y with "RES of " before. Points where Y or model have no value are left
/// out. Each has the errors of its point. Throws EParserException and Error (TCurFit::Prepare), EIntegerDivision; `target`
/// is then as it was.
void FitResiduals(const TDataSeries& source, TDataSeries& target);

}  // namespace tarnwick
