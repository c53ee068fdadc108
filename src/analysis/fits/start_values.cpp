#include "analysis/fits/start_values.h"

#include <Eigen/Dense>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <memory>
#include <random>
#include <span>
#include <utility>

#include "base/error.h"
#include "base/text_encoding.h"
#include "expr/block/block_evaluator.h"
#include "expr/words/parser_exception.h"
#include "fit/judge/equal_values.h"
#include "fit/judge/verdict_summary.h"
#include "fit/judge/verdict_words.h"
#include "fit/model/curve_fit.h"
#include "fit/model/find_parameter.h"
#include "fit/model/random_model.h"

namespace tarnwick {
namespace {

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::size_t kBuckets = kBlockLength / 2 - 10;
constexpr int kMostTrials = 12000;     // some tenths of a second
constexpr int kMostSweeps = 4;         // over all parameters, from one beginning
constexpr int kProbes = 24;            // at which a parameter must act linearly
constexpr double kSameColumn = 1e-9;   // relative
constexpr double kLeastSize = 1e-300;  // of a column of a linear parameter
constexpr int kMostSearches = 4;       // each knows more points where the model may lack a value

struct Places {
  std::vector<double> x;
  std::vector<double> y;
};

/// All points, or of so many buckets the lowest and the highest each: peaks stay. Room for some more is left then.
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
  std::size_t undefined = 0;   // places at which the model has no value
  double rss = kInf;           // of the others
};

/// A value at every place comes before a small sum of squares: no fit starts without it.
bool Better(const Trial& a, const Trial& b) {
  return a.rss < kInf && (a.undefined < b.undefined || b.rss == kInf ||
                          (a.undefined == b.undefined && a.rss < b.rss));
}

class StartSearch {
 public:
  StartSearch(const FitJob& job, Places places)
      : job_(job),
        places_(std::move(places)),
        pool_(Pool(places_)),
        range_(places_.x.back() - places_.x.front()),
        parameters_(job.settings.parameters) {
    model_.SetSettings(job.settings, MarkModified::No);
    model_.Prepare();
    if (const std::string trouble = RandomTrouble(model_); !trouble.empty()) throw Error(trouble);
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
    std::vector<std::size_t> missing;
    for (int search = 0; search < kMostSearches; ++search) {
      had_value_.assign(places_.x.size(), false);
      Trial best = Search();
      if (best.rss == kInf) best.values = Beginning();
      best.values = WithoutTurns(std::move(best.values));
      std::vector<double> rounded = best.values;
      for (std::size_t i = 0; i < varied_.size(); ++i)
        rounded[i] = std::clamp(Rounded(best.values[i]), Parameter(i).Low, Parameter(i).High);
      for (const std::vector<double>& values : {rounded, best.values}) {
        missing = UndefinedAt(values);
        if (missing.empty()) return With(values);
      }
      RefuseWhatNeverHasAValue();
      if (!Remember(missing)) break;
    }
    throw Error(
        "No starting values were found with which the model has a value everywhere; it has none "
        "at " +
        PlacesText(job_.x[missing.front()], std::ssize(missing)) + ".");
  }

 private:
  const ParameterSettings& Parameter(std::size_t i) const { return parameters_[varied_[i]]; }
  bool Allows(std::size_t i, double value) const {
    return value >= Parameter(i).Low && value <= Parameter(i).High;
  }

  std::vector<double> CurveAt(const std::vector<double>& values) {
    evaluator_->Load(values);
    const double* const curve = evaluator_->Values(places_.x).values;
    return {curve, curve + places_.x.size()};
  }

  /// A phase that lies turns away is as good as the one within half a turn of 0.
  std::vector<double> WithoutTurns(std::vector<double> values) {
    const std::vector<double> curve = CurveAt(values);
    for (const std::size_t i : others_) {
      for (const double turn : kTurns) {
        std::vector<double> nearer = values;
        nearer[i] = std::remainder(values[i], turn);
        if (nearer[i] == values[i] || !Allows(i, nearer[i]) ||
            !AreSameCurve(CurveAt(nearer), curve))
          continue;
        values = std::move(nearer);
        break;
      }
    }
    return values;
  }

  Trial Search() {
    trials_ = 0;
    Trial best = Descent(Beginning());
    while (!others_.empty() && trials_ < kMostTrials) {
      Trial next = Descent(Random());
      if (Better(next, best)) best = std::move(next);
    }
    return best;
  }

  std::vector<ParameterSettings> With(const std::vector<double>& values) const {
    std::vector<ParameterSettings> found = parameters_;
    for (std::size_t i = 0; i < varied_.size(); ++i) found[varied_[i]].Value = values[i];
    return found;
  }

  /// The points of the job at which the model has no value with these.
  std::vector<std::size_t> UndefinedAt(const std::vector<double>& values) {
    std::vector<double> curve(job_.x.size());
    evaluator_->Load(values);
    evaluator_->Values(job_.x, curve);
    std::vector<std::size_t> undefined;
    for (std::size_t i = 0; i < curve.size(); ++i)
      if (!std::isfinite(curve[i])) undefined.push_back(i);
    return undefined;
  }

  /// Throws Error where some place had a value in no trial, as x = 0 of exp(-E/x).
  void RefuseWhatNeverHasAValue() const {
    std::vector<double> x;
    for (std::size_t i = 0; i < had_value_.size(); ++i)
      if (!had_value_[i]) x.push_back(places_.x[i]);
    if (x.empty()) return;
    throw Error("The model has no value at " + PlacesText(x.front(), std::ssize(x)) +
                " whatever parameters are tried, so that no fit can start: leave such points out, "
                "by the margins where they lie at an end.");
  }

  /// Takes the outermost of these points among the places. False where there is no room, or they are all there already.
  bool Remember(const std::vector<std::size_t>& points) {
    if (job_.x.size() <= kBlockLength || places_.x.size() + 2 > kBlockLength) return false;
    for (const std::size_t i : {points.front(), points.back()}) {
      places_.x.push_back(job_.x[i]);
      places_.y.push_back(job_.y[i]);
    }
    return true;
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
      if (!std::isfinite(target(rows)) || !matrix.row(rows).allFinite()) continue;
      had_value_[k] = true;
      ++rows;
    }
    const std::size_t undefined = places_.x.size() - static_cast<std::size_t>(rows);
    if (rows == 0 || rows < columns) return {std::move(values), undefined, kInf};
    Eigen::VectorXd rest = target.head(rows);
    if (columns > 0) {
      // Of one size, lest x^3 of small x counts as no column at all.
      const Eigen::VectorXd sizes =
          matrix.topRows(rows).cwiseAbs().colwise().maxCoeff().cwiseMax(kLeastSize).transpose();
      const Eigen::MatrixXd scaled = matrix.topRows(rows) * sizes.cwiseInverse().asDiagonal();
      Eigen::VectorXd solved = scaled.colPivHouseholderQr().solve(rest).cwiseQuotient(sizes);
      for (Eigen::Index c = 0; c < columns; ++c) {
        const std::size_t i = linear_[static_cast<std::size_t>(c)];
        solved(c) = std::clamp(solved(c), Parameter(i).Low, Parameter(i).High);
        values[i] = solved(c);
      }
      rest -= matrix.topRows(rows) * solved;
    }
    const double rss = rest.squaredNorm();
    return {std::move(values), undefined, std::isfinite(rss) ? rss : kInf};
  }

  /// Takes a value of parameter `i` where it makes the sum of squares less.
  void TryValue(Trial& best, std::size_t i, double value) {
    if (!Allows(i, value) || value == best.values[i]) return;
    std::vector<double> values = best.values;
    values[i] = value;
    Take(Tried(std::move(values)), best);
  }

  /// Takes `next` for `best` if it is better with the linear parameters as they were solved for, too: A*x^n may be too great.
  void Take(Trial next, Trial& best) {
    if (!Better(next, best)) return;
    const std::vector<double> curve = CurveAt(next.values);
    const auto undefined = std::ranges::count_if(curve, [](double y) { return !std::isfinite(y); });
    next.undefined = std::max(next.undefined, static_cast<std::size_t>(undefined));
    if (Better(next, best)) best = std::move(next);
  }

  /// One parameter after the other is given the best value of the pool, until none gets better; then steps that get smaller.
  Trial Descent(std::vector<double> beginning) {
    Trial best{beginning, places_.x.size(), kInf};
    Take(Tried(std::move(beginning)), best);
    for (int sweep = 0; sweep < kMostSweeps; ++sweep) {
      const Trial before = best;
      for (const std::size_t i : others_) {
        for (const double value : pool_) TryValue(best, i, value);
      }
      if (!Better(best, before)) break;
    }
    if (best.rss == kInf) return best;
    for (double step = 0.3; step > 0.01; step /= 1.6) {
      for (const std::size_t i : others_) {
        for (const double sign : {-1.0, 1.0}) {
          TryValue(best, i, best.values[i] * (1 + sign * step));
          TryValue(best, i, best.values[i] + sign * step * range_ / 8);
        }
      }
    }
    return best;
  }

  const FitJob& job_;
  Places places_;
  std::vector<double> pool_;
  double range_;                 // from the first point's X to the last one's
  std::vector<bool> had_value_;  // the places at which some trial had one
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
  if (job.x.empty()) {
    const std::int64_t undefined = job.points_chosen - job.points_without_error;
    throw Error(NoPointsText(job.points_without_error, undefined));
  }
  StartSearch search(job, Reduced(job));
  if (!search.CanRun()) return std::nullopt;
  return search.Run();
}

namespace {

void GuessNamed(FitJob& job) {
  const std::string of_data_set = "DataSet \"" + job.data_set + "\": ";
  try {
    const auto guess = GuessStart(job);
    if (!guess) throw Error("its points tell no starting values of its model.");
    job.settings.parameters = *guess;
  } catch (const EParserException&) {
    throw;  // the formula's matter
  } catch (const Error& error) {
    throw Error(of_data_set + error.what());
  }
}

}  // namespace

void GuessJointStart(std::span<FitJob> jobs, std::span<const std::string> shared) {
  for (FitJob& job : jobs) GuessNamed(job);
  for (const std::string& name : shared) {
    std::vector<ParameterSettings*> same;
    for (FitJob& job : jobs) {
      if (ParameterSettings* const one = FindParameter(job.settings.parameters, name))
        same.push_back(one);
    }
    double mean = 0;
    for (const ParameterSettings* const one : same)
      mean += one->Value / static_cast<double>(same.size());
    for (ParameterSettings* const one : same) one->Value = mean;
  }
}

}  // namespace tarnwick
