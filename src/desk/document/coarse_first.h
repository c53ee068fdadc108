// Which DataSets that were read just now show a coarse first picture of a large table. Knows DataSets and tables; knows no
// document.
#pragma once

#include <span>

#include "base/progress.h"

namespace tarnwick {

class TDataSeries;

/// Tells it in their descriptions, so that every row is read behind it (IsCoarse), and reads every row here of those whose rows
/// cannot be put in later. `read`: by AllSourceKinds(FirstPicture::Coarse). False: cancelled. Throws as RefreshAll().
bool SettleCoarse(std::span<TDataSeries* const> read, Progress& progress);

}  // namespace tarnwick
