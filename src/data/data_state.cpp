#include "data/data_state.h"

namespace tarnwick {

bool SameState(const DataState& left, const DataState& right) {
  return left.points.SharesAllWith(right.points) && left.id_counter == right.id_counter &&
         left.settings == right.settings;
}

}  // namespace tarnwick
