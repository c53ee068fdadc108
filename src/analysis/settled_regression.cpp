#include "analysis/settled_regression.h"

#include "base/error.h"
#include "data/data_series.h"

namespace tarnwick {

void SettleRegression(TDataSeries& series) {
  if (series.RegressionType() == RegressionType::None) return;
  series.UpdateRegression();
  if (!series.RegressionFailure().empty()) throw Error(series.RegressionFailure());
}

}  // namespace tarnwick
