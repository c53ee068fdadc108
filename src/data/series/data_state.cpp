#include "data/series/data_state.h"

namespace tarnwick {

void PointsEdited(DataState& state) {
  state.extremes_stale = true;
  state.regression_stale = true;
  state.last_fit.points_changed = state.last_fit.record != nullptr;
}

bool SameState(const DataState& left, const DataState& right) {
  return left.points.SharesAllWith(right.points) && left.id_counter == right.id_counter &&
         left.gaps == right.gaps && left.errors == right.errors &&
         left.settings == right.settings && left.fit == right.fit &&
         left.last_fit == right.last_fit;
}

}  // namespace tarnwick
