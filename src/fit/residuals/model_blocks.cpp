#include "fit/residuals/model_blocks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/undefined.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {
namespace {

/// Puts numbers back when it goes.
class KeptValues {
 public:
  explicit KeptValues(const std::vector<double*>& places) : places_(places) {
    for (const double* place : places_) values_.push_back(*place);
  }
  ~KeptValues() {
    for (std::size_t i = 0; i < values_.size(); ++i) *places_[i] = values_[i];
  }
  KeptValues(const KeptValues&) = delete;
  KeptValues& operator=(const KeptValues&) = delete;

 private:
  const std::vector<double*>& places_;
  std::vector<double> values_;
};

double Slope(double below, double value, double above, double step) {
  if (std::isfinite(below) && std::isfinite(above)) return (above - below) / (2 * step);
  if (std::isfinite(above)) return (above - value) / step;
  if (std::isfinite(below)) return (value - below) / step;
  return kUndefined;
}

}  // namespace

BlockResult ModelBlocks::Differences(std::span<const double> x) {
  const std::size_t k = p_.size();
  memory_.resize((k + 2) * kBlockLength);
  const std::span<double> values(memory_.data(), kBlockLength);
  const std::span<double> above = std::span(memory_).subspan(kBlockLength, kBlockLength);
  std::copy_n(Values(x).values, x.size(), values.begin());
  columns_.clear();

  const std::vector<double> p = p_;
  std::vector<double> shifted = p;
  for (std::size_t j = 0; j < k; ++j) {
    double* const column = memory_.data() + (j + 2) * kBlockLength;
    const double wanted = kDifferenceStep * (p[j] == 0 ? 1 : std::abs(p[j]));
    shifted[j] = p[j] + wanted;
    const double step = shifted[j] - p[j];
    Load(shifted);
    std::copy_n(Values(x).values, x.size(), above.begin());
    shifted[j] = p[j] - step;
    Load(shifted);
    const double* const below = Values(x).values;
    for (std::size_t i = 0; i < x.size(); ++i)
      column[i] = Slope(below[i], values[i], above[i], step);
    shifted[j] = p[j];
    columns_.push_back(column);
  }
  Load(p);
  return {values.data(), columns_};
}

void EvaluatorBlocks::Load(std::span<const double> p) {
  p_.assign(p.begin(), p.end());
  evaluator_.Load(p_);
}

RecordBlocks::RecordBlocks(TCurFit& model, std::vector<double*> varied)
    : model_(model), varied_(std::move(varied)) {}

BlockResult RecordBlocks::Values(std::span<const double> x) {
  const KeptValues kept(varied_);
  for (std::size_t j = 0; j < varied_.size(); ++j) *varied_[j] = p_[j];
  std::ranges::transform(x, values_.begin(), [this](double at) { return model_.Value(at); });
  return {values_.data(), {}};
}

}  // namespace tarnwick
