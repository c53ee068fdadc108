#include "analysis/fits/start_values.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <memory>
#include <random>
#include <span>
#include <utility>

#include "expr/block/block_evaluator.h"
#include "fit/model/curve_fit.h"

namespace tarnwick {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::size_t kBuckets = kBlockLength / 2;
constexpr int kMostTrials = 12000;     // some tenths of a second
constexpr int kMostSweeps = 4;         // over all parameters, from one beginning
constexpr int kProbes = 24;            // at which a parameter must act linearly
constexpr double kSameColumn = 1e-9;   // relative
constexpr double kLeastDefined = 0.8;  // share of the points at which the model must have a value

struct Places {
  std::vector<double> x;
  std::vector<double> y;
};

/// All points, or of so many buckets the lowest and the highest each: peaks stay.
Places Reduced(const FitJob& job) {
  const std::size_t count = job.x.size();
  if (count <= kBlockLength) return {job.x, job.y};
  Places places;
  for (std::size_t bucket = 0; bucket < kBuckets; ++bucket) {
    const auto begin = job.y.begin() + static_cast<std::ptrdiff_t>(bucket * count / kBuckets);
    const auto end = job.y.begin() + static_cast<std::ptrdiff_t>((bucket + 1) * count / kBuckets);
    const auto [low, high] = std::minmax_element(begin, end);
    for (const auto at : {std::min(low, high), std::max(low, high)}) {
      places.x.push_back(job.x[static_cast<std::size_t>(at - job.y.begin())]);
      places.y.push_back(*at);
    }
  }
  return places;
}

/// Twice the mean distance at which Y passes the middle between its extremes: the period of what oscillates.
double PeriodOf(const Places& places) {
  const auto [low, high] = std::ranges::minmax(places.y);
  const double middle = (low + high) / 2;
  int passes = 0;
  for (std::size_t i = 1; i < places.y.size(); ++i)
    passes += (places.y[i] > middle) != (places.y[i - 1] > middle);
  return passes == 0 ? 0 : 2 * (places.x.back() - places.x.front()) / passes;
}

/// Values that a parameter may have beside such points: places, periods, and widths, rates and exponents of every size.
std::vector<double> Pool(const Places& places) {
  constexpr int kPlaces = 24;
  constexpr int kPerDecade = 4;
  std::vector<double> pool;
  const std::size_t count = places.x.size();
  for (int i = 0; i <= kPlaces; ++i)
    pool.push_back(places.x[(count - 1) * static_cast<std::size_t>(i) / kPlaces]);
  for (const double factor : {0.5, 0.8, 0.9, 1.0, 1.1, 1.25, 2.0})
    pool.push_back(PeriodOf(places) * factor);
  const double range = places.x.back() - places.x.front();
  const double far = std::max(std::abs(places.x.front()), std::abs(places.x.back()));
  if (!(range > 0) || !std::isfinite(range)) return pool;
  const double least = std::min({range / 1000, 0.1 / range, 0.1});
  const double greatest = std::max({far * 1000, 100 / range, 10.0});
  const int first = static_cast<int>(std::floor(kPerDecade * std::log10(least)));
  const int last = static_cast<int>(std::ceil(kPerDecade * std::log10(greatest)));
  for (int i = first; i <= last; ++i) {
    const double size = std::pow(10.0, static_cast<double>(i) / kPerDecade);
    pool.push_back(size);
    pool.push_back(-size);
  }
  return pool;
}

/// To the digits that a guess is worth.
double Rounded(double value) {
  if (value == 0 || !std::isfinite(value)) return value;
  const double unit = std::pow(10.0, 3 - std::floor(std::log10(std::abs(value))));
  const double rounded = std::round(value * unit) / unit;
  return std::isfinite(rounded) ? rounded : value;
}

struct Trial {
  std::vector<double> values;  // of the varied parameters
  double rss = kInf;
};

class StartSearch {
 public:
  StartSearch(const FitJob& job, Places places)
      : places_(std::move(places)), pool_(Pool(places_)), parameters_(job.settings.parameters) {
    model_.SetSettings(job.settings, false);
    model_.Prepare();
    std::vector<const double*> addresses;
    for (std::size_t i = 0; i < parameters_.size(); ++i) {
      if (!parameters_[i].Vary) continue;
      varied_.push_back(i);
      addresses.push_back(model_.Param(static_cast<std::int32_t>(i) + 1).ValuePtr());
    }
    evaluator_ = BlockEvaluator::Make(model_, model_.XValue(), addresses);
  }

  bool CanRun() const { return evaluator_ != nullptr && !varied_.empty(); }

  std::vector<ParameterSettings> Run() {
    FindLinear();
    Trial best = Descent(Beginning());
    while (!others_.empty() && trials_ < kMostTrials) {
      Trial next = Descent(Random());
      if (next.rss < best.rss) best = std::move(next);
    }
    std::vector<ParameterSettings> found = parameters_;
    if (best.rss == kInf) return found;
    for (std::size_t i = 0; i < varied_.size(); ++i) {
      ParameterSettings& one = found[varied_[i]];
      one.Value = std::clamp(Rounded(best.values[i]), one.Low, one.High);
    }
    return found;
  }

 private:
  const ParameterSettings& Parameter(std::size_t i) const { return parameters_[varied_[i]]; }
  bool Allows(std::size_t i, double value) const {
    return value >= Parameter(i).Low && value <= Parameter(i).High;
  }

  std::vector<double> Beginning() const {
    std::vector<double> values;
    for (const std::size_t i : varied_) values.push_back(parameters_[i].Value);
    return values;
  }

  std::vector<double> Random() {
    std::vector<double> values = Beginning();
    for (const std::size_t i : others_) {
      const double value = pool_[random_() % pool_.size()];
      if (Allows(i, value)) values[i] = value;
    }
    return values;
  }

  std::vector<double> Column(const std::vector<double>& values, std::size_t i) {
    evaluator_->Load(values);
    const double* const column = evaluator_->Derivatives(places_.x).derivatives[i];
    return {column, column + places_.x.size()};
  }

  /// True when the derivatives by all of `chosen` stay as they are whatever values these have.
  bool AreLinear(const std::vector<std::size_t>& chosen) {
    for (int probe = 0; probe < kProbes; ++probe) {
      std::vector<double> values = Beginning();
      for (double& value : values) value = pool_[random_() % pool_.size()];
      std::vector<double> others = values;
      for (const std::size_t i : chosen) others[i] = values[i] * 2 + 1;
      for (const std::size_t i : chosen) {
        const std::vector<double> before = Column(values, i);
        const std::vector<double> after = Column(others, i);
        for (std::size_t k = 0; k < before.size(); ++k) {
          const double change = std::abs(after[k] - before[k]);
          if (change > kSameColumn * std::max(std::abs(before[k]), std::abs(after[k])))
            return false;
        }
      }
    }
    return true;
  }

  void FindLinear() {
    for (std::size_t i = 0; i < varied_.size(); ++i) {
      linear_.push_back(i);
      if (AreLinear(linear_)) continue;
      linear_.pop_back();
      others_.push_back(i);
    }
  }

  /// The sum of squares with the linear parameters where it is least.
  Trial Tried(std::vector<double> values) {
    ++trials_;
    for (const std::size_t i : linear_) values[i] = 0;
    evaluator_->Load(values);
    const BlockResult result = evaluator_->Derivatives(places_.x);
    const auto columns = static_cast<Eigen::Index>(linear_.size());
    Eigen::MatrixXd matrix(static_cast<Eigen::Index>(places_.x.size()), columns);
    Eigen::VectorXd target(matrix.rows());
    Eigen::Index rows = 0;
    for (std::size_t k = 0; k < places_.x.size(); ++k) {
      target(rows) = places_.y[k] - result.values[k];
      for (Eigen::Index c = 0; c < columns; ++c)
        matrix(rows, c) = result.derivatives[linear_[static_cast<std::size_t>(c)]][k];
      if (std::isfinite(target(rows)) && matrix.row(rows).allFinite()) ++rows;
    }
    const double defined = static_cast<double>(rows) / static_cast<double>(places_.x.size());
    if (defined < kLeastDefined || rows < columns) return {std::move(values), kInf};
    Eigen::VectorXd rest = target.head(rows);
    if (columns > 0) {
      Eigen::VectorXd solved = matrix.topRows(rows).colPivHouseholderQr().solve(rest);
      for (Eigen::Index c = 0; c < columns; ++c) {
        const std::size_t i = linear_[static_cast<std::size_t>(c)];
        solved(c) = std::clamp(solved(c), Parameter(i).Low, Parameter(i).High);
        values[i] = solved(c);
      }
      rest -= matrix.topRows(rows) * solved;
    }
    const double rss = rest.squaredNorm() / defined;
    return {std::move(values), std::isfinite(rss) ? rss : kInf};
  }

  /// Takes a value of parameter `i` where it makes the sum of squares less.
  void TryValue(Trial& best, std::size_t i, double value) {
    if (!Allows(i, value) || value == best.values[i]) return;
    std::vector<double> values = best.values;
    values[i] = value;
    Trial next = Tried(std::move(values));
    if (next.rss < best.rss) best = std::move(next);
  }

  /// One parameter after the other is given the best value of the pool, until none gets better; then steps that get smaller.
  Trial Descent(std::vector<double> beginning) {
    Trial best = Tried(std::move(beginning));
    for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
      const double before = best.rss;
      for (const std::size_t i : others_) {
        for (const double value : pool_) TryValue(best, i, value);
      }
      if (!(best.rss < before)) break;
    }
    if (best.rss == kInf) return best;
    const double range = places_.x.back() - places_.x.front();
    for (double step = 0.3; step > 0.01; step /= 1.6) {
      for (const std::size_t i : others_) {
        for (const double sign : {-1.0, 1.0}) {
          TryValue(best, i, best.values[i] * (1 + sign * step));
          TryValue(best, i, best.values[i] + sign * step * range / 8);
        }
      }
    }
    return best;
  }

  Places places_;
  std::vector<double> pool_;
  std::vector<ParameterSettings> parameters_;
  TCurFit model_;
  std::vector<std::size_t> varied_;
  std::unique_ptr<BlockEvaluator> evaluator_;
  std::vector<std::size_t> linear_;  // among the varied ones
  std::vector<std::size_t> others_;
  std::minstd_rand random_{1};  // the same guess every time
  int trials_ = 0;
};

}  // namespace

std::optional<std::vector<ParameterSettings>> GuessStart(const FitJob& job) {
  if (job.x.empty()) return std::nullopt;
  StartSearch search(job, Reduced(job));
  if (!search.CanRun()) return std::nullopt;
  return search.Run();
}

}  // namespace tarnwick
