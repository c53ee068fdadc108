// A regression that what follows can rely on. Knows DataSets.
#pragma once

namespace tarnwick {

class TDataSeries;

/// Brings the DataSet's regression, if it has one, up to date. Throws Error why it failed, also when that was before now.
void SettleRegression(TDataSeries& series);

}  // namespace tarnwick
