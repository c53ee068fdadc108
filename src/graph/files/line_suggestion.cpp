#include "graph/files/line_suggestion.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <span>
#include <vector>

#include "data/names/argument_names.h"
#include "data/points/arrival_order.h"
#include "data/points/point_columns.h"
#include "data/points/turns.h"

namespace tarnwick {
namespace {

constexpr double kNoTurn = 0.02;    // of the range: going back no further is jitter
constexpr double kLate = 0.02;      // of the points: so few out of order came late
constexpr double kLongStep = 0.25;  // of the range: longer steps in the mean are jumps
constexpr std::size_t kPointsATurn = 8;
constexpr std::size_t kTurnsOfLoop = 2;  // allowed to the smallest loop
constexpr std::size_t kFewest = 5;       // points below which no order is seen
constexpr std::size_t kMostGroups = 100;
constexpr std::size_t kLeastRepeats = 3;  // of each X in the mean

/// Between points that follow one another in one piece.
double MeanStep(std::span<const double> x, std::span<const std::size_t> breaks) {
  double length = 0;
  std::size_t steps = 0;
  for (std::size_t i = 1; i < x.size(); ++i) {
    if (std::ranges::binary_search(breaks, i)) continue;
    length += std::abs(x[i] - x[i - 1]);
    ++steps;
  }
  return steps == 0 ? 0 : length / static_cast<double>(steps);
}

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

/// One point that stands elsewhere makes no loop of a column that runs on.
bool GoesOnButForOne(std::span<const double> x, double jitter, double sign) {
  constexpr std::size_t kFewestOfOrder = 8;
  if (x.size() < kFewestOfOrder) return false;
  std::size_t furthest = 0, back = 1;
  while (back < x.size() && sign * x[back] >= sign * x[furthest] - jitter) {
    if (sign * x[back] > sign * x[furthest]) furthest = back;
    ++back;
  }
  for (const std::size_t one : {furthest, back}) {
    std::vector<double> others(x.begin(), x.end());
    if (one < others.size()) others.erase(others.begin() + static_cast<std::ptrdiff_t>(one));
    if (CountLate(others, jitter, sign) == 0) return true;
  }
  return false;
}

/// "58, 59, 0, 1, 2": far back, and on from there. Few rows may do so, but they are not late.
bool StartsOver(std::span<const double> x, double range, double sign) {
  constexpr double kFar = 0.5;  // of the range
  for (std::size_t i = 1; i + 2 < x.size(); ++i) {
    if (sign * (x[i - 1] - x[i]) > kFar * range && sign * (x[i + 1] - x[i]) > 0 &&
        sign * (x[i + 2] - x[i + 1]) > 0) {
      return true;
    }
  }
  return false;
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

/// X stands for a few points each time and then jumps: what stands would pass for what goes on smoothly.
bool JumpsFromGroupToGroup(const std::vector<double>& x, double range, double jitter) {
  std::vector<double> groups = x;
  groups.erase(std::unique(groups.begin(), groups.end()), groups.end());
  if (groups.size() > kMostGroups || x.size() < kLeastRepeats * groups.size()) return false;
  const std::size_t turns = TurnsOf(groups, {}, jitter).size();
  return turns > std::max(kTurnsOfLoop, groups.size() / kPointsATurn) &&
         MeanStep(groups, {}) > kLongStep * range;
}

/// A latitude over its longitude.
bool ArePlaces(const TDSInfo& info) {
  return NamesLongitude(info.XDataColumn) && NameCoordinates(info.XDataColumn, info.YDataColumn);
}

LineSuggestion SuggestByX(const TDataSeries& series) {
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
    const std::size_t count = CountLate(x, kNoTurn * range, sign);
    if (count == 0) return LineSuggestion::ByX;
    const bool few = static_cast<double>(count) <= late && !StartsOver(x, range, sign);
    if (few || GoesOnButForOne(x, kNoTurn * range, sign)) return LineSuggestion::LateRows;
  }
  const std::vector<std::size_t> breaks = BreaksInOrder(points, order, series.Gaps());
  const double jitter = JitterOf(by_x);
  if (JumpsFromGroupToGroup(x, range, jitter)) return LineSuggestion::Groups;
  const std::size_t turns = TurnsOf(x, breaks, jitter).size();
  const std::size_t most_turns = std::max(kTurnsOfLoop, x.size() / kPointsATurn);
  return turns <= most_turns && MeanStep(x, breaks) <= kLongStep * range
             ? LineSuggestion::AsTheyCame
             : LineSuggestion::SymbolsOnly;
}

}  // namespace

LineSuggestion SuggestLineOrder(const TDataSeries& series) {
  const LineSuggestion suggestion = SuggestByX(series);
  const bool joined =
      suggestion == LineSuggestion::LateRows || suggestion == LineSuggestion::AsTheyCame;
  return joined && ArePlaces(series.Source()) ? LineSuggestion::Places : suggestion;
}

SeriesStyle FollowSuggestion(SeriesStyle style, LineSuggestion suggestion) {
  if (suggestion == LineSuggestion::AsTheyCame) style.line_order = LineOrder::AsTheyCame;
  constexpr LineSuggestion kSymbols[] = {LineSuggestion::SymbolsOnly, LineSuggestion::Places,
                                         LineSuggestion::Groups};
  if (std::ranges::find(kSymbols, suggestion) != std::end(kSymbols)) {
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
  tell(LineSuggestion::LateRows, "X goes back in a few rows: points are joined by X");
  tell(LineSuggestion::AsTheyCame, "X turns back: points are joined in the order of the file");
  tell(LineSuggestion::SymbolsOnly, "X is in no order: points are shown as symbols without lines");
  tell(LineSuggestion::Places, "places on a map are shown as symbols without lines");
  tell(LineSuggestion::Groups, "few X repeat often: points are shown as symbols without lines");
  return text;
}

}  // namespace tarnwick
