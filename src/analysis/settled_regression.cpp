#include "analysis/settled_regression.h"

#include "base/error.h"
#include "data/series/data_series.h"

namespace tarnwick {

void SettleRegression(TDataSeries& series) {
  if (series.RegressionType() == RegressionType::None) return;
  series.UpdateRegression();
  if (!series.Regression().failure.empty()) throw Error(series.Regression().failure);
}

}  // namespace tarnwick
