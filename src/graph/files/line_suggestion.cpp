#include "graph/files/line_suggestion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <span>

#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"

namespace tarnwick {
namespace {

constexpr double kNoTurn = 0.02;    // of the range: going back no further is jitter
constexpr double kLate = 0.02;      // of the points: so few out of order came late
constexpr double kLongStep = 0.25;  // of the range: longer steps in the mean are jumps
constexpr double kFarOut = 0.05;    // of the points, at either end
constexpr std::size_t kPointsATurn = 8;
constexpr std::size_t kTurnsOfLoop = 2;  // allowed to the smallest loop
constexpr std::size_t kFewest = 5;       // points below which no order is seen
constexpr std::size_t kMostGroups = 100;
constexpr std::size_t kLeastRepeats = 3;  // of each X in the mean

/// What X does from point to point.
class Way {
 public:
  explicit Way(double range) : turn_(kNoTurn * range) {}

  /// The first point, and the first behind a gap.
  void BeginPiece(double x) {
    low_ = high_ = last_ = x;
    direction_ = 0;
  }
  void Add(double x) {
    ++steps_;
    length_ += std::abs(x - last_);
    last_ = x;
    low_ = std::min(low_, x);
    high_ = std::max(high_, x);
    const bool fell = x<high_ - turn_, rose = x> low_ + turn_;
    if (direction_ == 0) {
      direction_ = rose ? 1 : fell ? -1 : 0;
    } else if (direction_ > 0 ? fell : rose) {
      ++turns_;
      direction_ = -direction_;
      low_ = high_ = x;
    } else if (direction_ > 0) {
      low_ = high_;
    } else {
      high_ = low_;
    }
  }
  std::size_t Turns() const { return turns_; }
  double MeanStep() const { return steps_ == 0 ? 0 : length_ / static_cast<double>(steps_); }

 private:
  double turn_;
  double low_ = 0, high_ = 0, last_ = 0;
  int direction_ = 0;
  std::size_t turns_ = 0, steps_ = 0;
  double length_ = 0;
};

/// How many points stand further back than jitter explains.
std::size_t CountLate(std::span<const double> x, double jitter, double sign) {
  std::size_t late = 0;
  double furthest = sign * x.front();
  for (const double value : x) {
    furthest = std::max(furthest, sign * value);
    if (sign * value < furthest - jitter) ++late;
  }
  return late;
}

bool StandsInGroups(const PointChain& points) {
  std::size_t groups = 1;
  double last = points.Front().x;
  for (std::size_t number = 0; number < points.ChunkCount(); ++number) {
    for (const double x : points.Chunk(number).x) {
      if (x == last) continue;
      last = x;
      if (++groups > kMostGroups) return false;
    }
  }
  return groups > 1 && points.Size() >= kLeastRepeats * groups;
}

}  // namespace

LineSuggestion SuggestLineOrder(const TDataSeries& series) {
  const PointChain& points = series.Points();
  if (points.Size() < kFewest) return LineSuggestion::ByX;
  if (IdsAscend(points))
    return series.DuplicatesAllowed() && StandsInGroups(points) ? LineSuggestion::Groups
                                                                : LineSuggestion::ByX;
  const std::vector<std::uint32_t> order = ArrivalOrder(points);
  const std::vector<double> by_x = XValues(points);
  std::vector<double> x(by_x.size());
  std::ranges::transform(order, x.begin(), [&by_x](std::uint32_t index) { return by_x[index]; });
  const double range = by_x.back() - by_x.front();
  if (!std::isfinite(range) || range == 0) return LineSuggestion::ByX;
  const double late = kLate * static_cast<double>(x.size());
  for (const double sign : {1.0, -1.0}) {
    if (static_cast<double>(CountLate(x, kNoTurn * range, sign)) <= late)
      return LineSuggestion::ByX;
  }
  const std::vector<std::size_t> breaks = BreaksInOrder(points, order, series.Gaps());
  // Without the few points far out, beside which all others seem to stand still.
  const auto at = [&by_x](double share) {
    return by_x[static_cast<std::size_t>(share * static_cast<double>(by_x.size() - 1))];
  };
  Way way(at(1 - kFarOut) - at(kFarOut));
  auto next_break = breaks.begin();
  way.BeginPiece(x.front());
  for (std::size_t i = 1; i < x.size(); ++i) {
    if (next_break != breaks.end() && *next_break == i) {
      way.BeginPiece(x[i]);
      ++next_break;
    } else {
      way.Add(x[i]);
    }
  }
  const std::size_t most_turns = std::max(kTurnsOfLoop, x.size() / kPointsATurn);
  return way.Turns() <= most_turns && way.MeanStep() <= kLongStep * range
             ? LineSuggestion::AsTheyCame
             : LineSuggestion::SymbolsOnly;
}

SeriesStyle FollowSuggestion(SeriesStyle style, LineSuggestion suggestion) {
  if (suggestion == LineSuggestion::AsTheyCame) style.line_order = LineOrder::AsTheyCame;
  if (suggestion == LineSuggestion::SymbolsOnly || suggestion == LineSuggestion::Groups) {
    style.connect_points = false;
    style.show_symbols = true;
  }
  return style;
}

std::string TellSuggestions(const std::vector<LineSuggestion>& suggestions) {
  const auto some = [&](LineSuggestion suggestion) {
    return std::ranges::find(suggestions, suggestion) != suggestions.end();
  };
  std::string text;
  const auto tell = [&](LineSuggestion suggestion, const char* clause) {
    if (some(suggestion)) text += (text.empty() ? "" : "; elsewhere ") + std::string(clause);
  };
  tell(LineSuggestion::AsTheyCame, "X turns back: points are joined in the order of the file");
  tell(LineSuggestion::SymbolsOnly, "X is in no order: points are shown as symbols without lines");
  tell(LineSuggestion::Groups, "few X repeat often: points are shown as symbols without lines");
  return text;
}

}  // namespace tarnwick
