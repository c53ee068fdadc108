#include "data/points/turns.h"

#include <algorithm>
#include <utility>

namespace tarnwick {
namespace {

constexpr double kNoTurn = 0.02;  // of the range
constexpr double kFarOut = 0.05;  // of the points, at either end

/// What X does from point to point.
class Way {
 public:
  explicit Way(double jitter) : jitter_(jitter) {}

  /// The first point, and the first behind a gap.
  void BeginPiece(std::size_t place, double x) {
    low_ = high_ = {place, x};
    direction_ = 0;
  }
  void Add(std::size_t place, double x) {
    if (x < low_.x) low_ = {place, x};
    if (x > high_.x) high_ = {place, x};
    const bool fell = x<high_.x - jitter_, rose = x> low_.x + jitter_;
    if (direction_ == 0) {
      direction_ = rose ? 1 : fell ? -1 : 0;
      if (direction_ != 0) TakeFurthest();
    } else if (direction_ > 0 ? fell : rose) {
      turns_.push_back((direction_ > 0 ? high_ : low_).place + 1);
      direction_ = -direction_;
      low_ = high_ = {place, x};
    } else {
      TakeFurthest();
    }
  }
  std::vector<std::size_t> Take() { return std::move(turns_); }

 private:
  struct Extreme {
    std::size_t place = 0;
    double x = 0;
  };

  /// From here on only going back behind the furthest point counts.
  void TakeFurthest() { (direction_ > 0 ? low_ : high_) = direction_ > 0 ? high_ : low_; }

  double jitter_;
  Extreme low_, high_;
  int direction_ = 0;
  std::vector<std::size_t> turns_;
};

}  // namespace

double JitterOf(std::span<const double> sorted_x) {
  const auto at = [&](double share) {
    return sorted_x[static_cast<std::size_t>(share * static_cast<double>(sorted_x.size() - 1))];
  };
  return kNoTurn * (at(1 - kFarOut) - at(kFarOut));
}

std::vector<std::size_t> TurnsOf(std::span<const double> x, std::span<const std::size_t> breaks,
                                 double jitter) {
  if (x.empty()) return {};
  Way way(jitter);
  way.BeginPiece(0, x.front());
  auto next_break = breaks.begin();
  for (std::size_t i = 1; i < x.size(); ++i) {
    if (next_break != breaks.end() && *next_break == i) {
      way.BeginPiece(i, x[i]);
      ++next_break;
    } else {
      way.Add(i, x[i]);
    }
  }
  return way.Take();
}

}  // namespace tarnwick
