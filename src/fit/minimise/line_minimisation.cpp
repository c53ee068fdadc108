#include "fit/minimise/line_minimisation.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarnwick {
namespace {

constexpr double kGoldenRatio = 1.618034;
constexpr double kGoldenSection = 0.381966;
constexpr double kParabolaLimit = 100;    // of a parabolic step, in current intervals
constexpr double kParabolaGuard = 1e-20;  // against division by zero
constexpr double kFarthestStep = 1e100;
constexpr int kMaxExpansions = 400;  // 1e100 by the golden ratio alone takes 479, by parabolas 50
constexpr double kRelativeTolerance = 0.0001;
constexpr double kAbsoluteGuard = 1e-10;
constexpr int kMaxSectionings = 100;

// The step where the parabola through three points has its vertex; not finite when a value is not.
double ParabolaVertex(const LinePoint& a, const LinePoint& b, const LinePoint& c) {
  const double r = (b.step - a.step) * (b.value - c.value);
  const double q = (b.step - c.step) * (b.value - a.value);
  const double guarded = std::copysign(std::max(std::abs(q - r), kParabolaGuard), q - r);
  return b.step - ((b.step - c.step) * q - (b.step - a.step) * r) / (2 * guarded);
}

bool Between(double step, double one_end, double other_end) {
  return (one_end - step) * (step - other_end) > 0;
}

// Brent's state: the bracket's ends and the three lowest points met.
class BrentSearch {
 public:
  explicit BrentSearch(const LineBracket& bracket)
      : low_(std::min(bracket.first.step, bracket.last.step)),
        high_(std::max(bracket.first.step, bracket.last.step)),
        best_(bracket.middle),
        second_(bracket.middle),
        third_(bracket.middle) {}

  bool Converged() const {
    return std::abs(best_.step - Middle()) <= 2 * Tolerance() - 0.5 * (high_ - low_);
  }

  double NextStep() {
    if (!TakeParabola()) TakeGoldenSection();
    // Closer than the tolerance, two values differ by rounding only.
    return std::abs(move_) >= Tolerance() ? best_.step + move_
                                          : best_.step + std::copysign(Tolerance(), move_);
  }

  void Accept(const LinePoint& point) {
    if (point.value <= best_.value) {
      (point.step >= best_.step ? low_ : high_) = best_.step;
      third_ = std::exchange(second_, std::exchange(best_, point));
      return;
    }
    (point.step < best_.step ? low_ : high_) = point.step;
    if (point.value <= second_.value || second_.step == best_.step) {
      third_ = std::exchange(second_, point);
    } else if (point.value <= third_.value || third_.step == best_.step ||
               third_.step == second_.step) {
      third_ = point;
    }
  }

  const LinePoint& Best() const { return best_; }

 private:
  double Middle() const { return 0.5 * (low_ + high_); }
  double Tolerance() const { return kRelativeTolerance * std::abs(best_.step) + kAbsoluteGuard; }

  // The vertex of the parabola through the three lowest points, when it lies inside the bracket and the moves shrink.
  bool TakeParabola() {
    if (std::abs(move_before_) <= Tolerance()) return false;
    const double r = (best_.step - second_.step) * (best_.value - third_.value);
    const double q = (best_.step - third_.step) * (best_.value - second_.value);
    const double move =
        ((best_.step - second_.step) * r - (best_.step - third_.step) * q) / (2 * (q - r));
    const double step = best_.step + move;
    // An undefined value among the three makes the move NaN: no comparison then holds.
    if (!(std::abs(move) < 0.5 * std::abs(move_before_) && step > low_ && step < high_)) {
      return false;
    }
    move_before_ = std::exchange(move_, move);
    if (step - low_ < 2 * Tolerance() || high_ - step < 2 * Tolerance()) {
      move_ = std::copysign(Tolerance(), Middle() - best_.step);
    }
    return true;
  }

  void TakeGoldenSection() {
    move_before_ = (best_.step >= Middle() ? low_ : high_) - best_.step;
    move_ = kGoldenSection * move_before_;
  }

  double low_;
  double high_;
  LinePoint best_;
  LinePoint second_;
  LinePoint third_;
  double move_ = 0;         // the last move
  double move_before_ = 0;  // the move before the last, or the part that was cut
};

}  // namespace

std::optional<LineBracket> BracketMinimum(const LineFunction& f, double at_zero) {
  const auto at = [&f](double step) { return LinePoint{step, f(step)}; };
  LinePoint a{0, at_zero};
  LinePoint b = at(1.0);
  if (b.value > a.value) std::swap(a, b);
  LinePoint c = at(b.step + kGoldenRatio * (b.step - a.step));
  for (int expansion = 0; b.value > c.value; ++expansion) {
    if (expansion == kMaxExpansions || std::abs(c.step) > kFarthestStep) return std::nullopt;
    const double limit = b.step + kParabolaLimit * (c.step - b.step);
    const double vertex = ParabolaVertex(a, b, c);
    LinePoint u;
    if (Between(vertex, b.step, c.step)) {
      u = at(vertex);
      if (u.value < c.value) return LineBracket{b, u, c};
      if (u.value > b.value) return LineBracket{a, b, u};
      u = at(c.step + kGoldenRatio * (c.step - b.step));
    } else if (Between(vertex, c.step, limit)) {
      u = at(vertex);
      if (u.value < c.value) {
        b = std::exchange(c, u);
        u = at(c.step + kGoldenRatio * (c.step - b.step));
      }
    } else if ((vertex - limit) * (limit - c.step) >= 0) {
      u = at(limit);
    } else {
      u = at(c.step + kGoldenRatio * (c.step - b.step));
    }
    a = std::exchange(b, std::exchange(c, u));
  }
  return LineBracket{a, b, c};
}

LinePoint MinimiseInBracket(const LineFunction& f, const LineBracket& bracket) {
  BrentSearch search(bracket);
  for (int i = 0; i < kMaxSectionings && !search.Converged(); ++i) {
    const double step = search.NextStep();
    search.Accept({step, f(step)});
  }
  return search.Best();
}

double LineMinimisation::ValueAt(std::span<const double> p, std::span<const double> direction,
                                 double step) {
  for (std::size_t i = 0; i < p.size(); ++i) trial_[i] = p[i] + step * direction[i];
  return run_.Value(trial_);
}

double LineMinimisation::Minimise(std::span<double> p, double value, std::span<double> direction) {
  const auto along = [&](double step) { return ValueAt(p, direction, step); };
  const std::optional<LineBracket> bracket = BracketMinimum(along, value);
  endless_ = !bracket;
  if (endless_) return value;
  const LinePoint lowest = MinimiseInBracket(along, *bracket);
  if (!(lowest.value < value)) return value;
  for (std::size_t i = 0; i < p.size(); ++i) {
    direction[i] *= lowest.step;
    p[i] += direction[i];
  }
  return lowest.value;
}

}  // namespace tarnwick
