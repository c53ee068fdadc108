#include "data/series/batch_errors.h"

namespace tarnwick {

bool BatchErrors::Idle() const {
  return own_.y.empty() && own_.x.empty() && errors_.y_values.Empty() && errors_.x_values.Empty();
}

void BatchErrors::Made(std::size_t first, std::size_t count, std::int32_t first_id) {
  if (!own_.y.empty()) errors_.y_values.SetRun(first_id, own_.y.subspan(first, count));
  if (!own_.x.empty()) errors_.x_values.SetRun(first_id, own_.x.subspan(first, count));
}

void BatchErrors::Placed(std::size_t position, double x, std::int32_t id) {
  if (Idle()) return;
  if (id == PlacedPoints::kNotLookedUp) {
    overwriting_.push_back({position, x});
    return;
  }
  Finish();  // the last value of an X is the one that counts
  Give(position, id);
}

void BatchErrors::Finish() {
  const PointChain& chain = points_.Chain();
  for (const Overwriting& one : overwriting_) {
    Give(one.position, chain.At(chain.LowerPlace(one.x)).id);
  }
  overwriting_.clear();
}

void BatchErrors::Give(std::size_t position, std::int32_t id) {
  errors_.y_values.Set(id, own_.y.empty() ? kUndefined : own_.y[position]);
  errors_.x_values.Set(id, own_.x.empty() ? kUndefined : own_.x[position]);
}

}  // namespace tarnwick
