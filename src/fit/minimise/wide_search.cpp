#include "fit/minimise/wide_search.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/split_mix.h"
#include "fit/judge/residual_pattern.h"
#include "fit/minimise/minimise_newton.h"
#include "fit/minimise/start_trial.h"

namespace tarnwick {
namespace {

constexpr std::size_t kMostPoints = 1024;
constexpr int kRounds = 2;
/// Draws for each parameter that is not linear, and in all.
constexpr int kDrawsPerParameter = 64;
constexpr int kMostDraws = 512;
/// From so many of the best draws a minimum is looked for.
constexpr std::size_t kKept = 6;
constexpr std::int32_t kShortRun = 40;
/// From what was found the search goes on at most so many times.
constexpr int kRepeats = 3;
/// A gain in the sum of squares below this share is none.
constexpr double kGain = 1e-6;

constexpr int kPlaces = 16;
constexpr double kFactors[] = {1e-3, 1e-2, 0.1, 0.3, 3, 10, 100, 1e3, -1};
constexpr double kWidths[] = {0.01, 0.03, 0.1, 0.3, 1};
constexpr double kShapes[] = {0.5, 1, 2, 4};
/// Parts of a given width of search to try on both sides of the start.
constexpr double kParts[] = {0.1, 0.25, 0.5, 0.75, 1};

/// Numbers that look like chance and are the same in every run.
class Draws {
 public:
  /// At least 0 and below 1.
  double Next() { return NextSplitMix(state_); }
  double Between(double low, double high) { return low + (high - low) * Next(); }

 private:
  std::uint64_t state_ = 0;
};

/// What the X tell of values that a parameter may have.
class NaturalValues {
 public:
  explicit NaturalValues(std::pair<double, double> range)
      : low_(range.first), width_(range.second - range.first) {}

  /// Worth a try for one parameter that is now at `value` and began at `start`.
  std::vector<double> Around(double value, double start, const ParameterRange& range) const {
    std::vector<double> values;
    if (range.search_width > 0) {
      for (const double part : kParts) {
        values.push_back(start - part * range.search_width);
        values.push_back(start + part * range.search_width);
      }
      return values;
    }
    for (const double factor : kFactors) values.push_back(factor * value);
    for (int i = 0; i < kPlaces; ++i) values.push_back(low_ + width_ * (i + 0.5) / kPlaces);
    for (const double share : kWidths) {
      values.push_back(share * width_);
      values.push_back(1 / (share * width_));
      values.push_back(-1 / (share * width_));
    }
    values.insert(values.end(), std::begin(kShapes), std::end(kShapes));
    std::erase_if(values,
                  [&](double v) { return !std::isfinite(v) || v < range.low || v > range.high; });
    return values;
  }

  double Draw(double value, const ParameterRange& range, Draws& draws) const {
    if (range.search_width > 0)
      return draws.Between(value - range.search_width, value + range.search_width);
    const double kind = draws.Next();
    if (kind < 0.5) return value * std::pow(10, draws.Between(-1, 1));
    if (kind < 0.75) return low_ + width_ * draws.Next();
    const double width = width_ * std::pow(10, draws.Between(-2, 0));
    return kind < 0.9 ? width : 1 / width;
  }

 private:
  double low_ = 0;
  double width_ = 0;
};

class WideSearch {
 public:
  WideSearch(LeastSquaresProblem& residuals, std::span<const double> start, Progress& progress)
      : residuals_(residuals),
        start_(start.begin(), start.end()),
        progress_(progress),
        trial_(residuals, start),
        nonlinear_(trial_.Nonlinear()),
        natural_(residuals.RangeOfX()) {}

  void AroundOneByOne(std::span<const double> from);
  void ByDraws(std::span<const double> from);
  WideSearchResult Refined(double limit);
  bool Useful() const { return !nonlinear_.empty(); }

 private:
  bool Stopped() const { return progress_.Cancelled(); }
  void Keep(StartCandidate candidate, std::size_t most);

  LeastSquaresProblem& residuals_;
  std::vector<double> start_;
  Progress& progress_;
  StartTrial trial_;
  std::vector<std::size_t> nonlinear_;
  NaturalValues natural_;
  std::vector<StartCandidate> drawn_;  // the best first
  std::vector<StartCandidate> ends_;
  std::int64_t evaluations_ = 0;
};

/// One parameter after the other to the best of its natural values.
void WideSearch::AroundOneByOne(std::span<const double> from) {
  std::optional<StartCandidate> best = trial_.Try({from.begin(), from.end()});
  if (!best) return;
  for (int round = 0; round < kRounds; ++round) {
    for (const std::size_t i : nonlinear_) {
      const std::vector<double> here = best->p;
      for (const double value : natural_.Around(here[i], start_[i], residuals_.Ranges()[i])) {
        if (Stopped()) return;
        std::vector<double> p = here;
        p[i] = value;
        std::optional<StartCandidate> candidate = trial_.Try(p);
        if (candidate && candidate->sum_of_squares < best->sum_of_squares)
          best = std::move(candidate);
      }
    }
  }
  ends_.push_back(*std::move(best));
}

void WideSearch::Keep(StartCandidate candidate, std::size_t most) {
  const auto place = std::ranges::upper_bound(drawn_, candidate.sum_of_squares, {},
                                              &StartCandidate::sum_of_squares);
  drawn_.insert(place, std::move(candidate));
  if (drawn_.size() > most) drawn_.pop_back();
}

/// All parameters at once.
void WideSearch::ByDraws(std::span<const double> from) {
  Draws draws;
  const int count = std::min(kDrawsPerParameter * static_cast<int>(nonlinear_.size()), kMostDraws);
  for (int i = 0; i < count && !Stopped(); ++i) {
    std::vector<double> p(from.begin(), from.end());
    for (const std::size_t j : nonlinear_)
      p[j] = natural_.Draw(from[j], residuals_.Ranges()[j], draws);
    if (std::optional<StartCandidate> candidate = trial_.Try(p)) Keep(*std::move(candidate), kKept);
  }
}

/// The lowest minimum next to what was kept, when it is lower than `limit`.
WideSearchResult WideSearch::Refined(double limit) {
  ends_.insert(ends_.end(), drawn_.begin(), drawn_.end());
  drawn_.clear();
  MinimiseOptions options;
  options.max_iterations = kShortRun;
  WideSearchResult result;
  for (const StartCandidate& candidate : ends_) {
    if (Stopped()) break;
    const MinimiseOutcome outcome =
        MinimiseNewton(residuals_, candidate.p, options, progress_).outcome;
    evaluations_ += outcome.evaluations;
    if (Failed(outcome.why) || !(outcome.value < limit * (1 - kGain))) continue;
    limit = outcome.value;
    result.p = outcome.p;
  }
  ends_.clear();
  result.evaluations = evaluations_ + trial_.Evaluations();
  return result;
}

}  // namespace

WideSearchResult SearchWidely(const LeastSquaresProblem& residuals, std::span<const double> start,
                              std::span<const double> found, Progress& progress) {
  const std::unique_ptr<LeastSquaresProblem> some = residuals.Thinned(kMostPoints);
  WideSearch search(*some, start, progress);
  if (!search.Useful()) return {};
  search.AroundOneByOne(start);
  search.AroundOneByOne(found);
  search.ByDraws(start);
  WideSearchResult best = search.Refined(some->SumOfSquares(found));
  // One term after the other finds its place: what is left may show that of the next.
  for (int i = 0; i < kRepeats && best.p; ++i) {
    const std::vector<double> rest = some->Residuals(*best.p, kMostPoints);
    if (!IsSuspicious(FindPattern(rest))) break;
    search.AroundOneByOne(*best.p);
    WideSearchResult next = search.Refined(some->SumOfSquares(*best.p));
    best.evaluations = next.evaluations;
    if (!next.p) break;
    best = std::move(next);
  }
  return best;
}

}  // namespace tarnwick
