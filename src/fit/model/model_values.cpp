#include "fit/model/model_values.h"

#include <algorithm>

#include "expr/block/block_evaluator.h"

namespace tarnwick {

std::vector<double> ModelValues(TCurFit& model, std::span<const double> x) {
  std::vector<double> values(x.size());
  if (const auto blocks = BlockEvaluator::Make(model, model.XValue())) {
    blocks->Load();
    blocks->Values(x, values);
  } else {
    std::ranges::transform(x, values.begin(), [&](double at) { return model.Value(at); });
  }
  return values;
}

}  // namespace tarnwick
