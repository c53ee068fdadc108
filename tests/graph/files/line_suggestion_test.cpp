#include "graph/files/line_suggestion.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <random>

namespace tarnwick {
namespace {

TEST(LineSuggestion, JoinsAsXGoes) {
  std::mt19937_64 random(3);
  std::uniform_real_distribution<double> uniform(0, 1);
  const auto turn = [](int i, int points) { return 6.2831853 * i / points; };
  using enum LineSuggestion;
  const struct {
    const char* what;
    int points;
    std::function<double(int)> x;
    LineSuggestion expected;
  } kCases[] = {
      {"rising", 100, [](int i) { return i; }, ByX},
      {"falling", 100, [](int i) { return -i; }, ByX},
      {"a few late rows", 1000, [](int i) { return i >= 500 && i < 510 ? i - 100 : i; }, LateRows},
      {"jitter", 500, [&](int i) { return i + 3 * uniform(random); }, ByX},
      {"ellipse", 24, [&](int i) { return std::cos(turn(i, 24)); }, AsTheyCame},
      {"sweep there and back", 400, [](int i) { return -std::abs(i - 200.0); }, AsTheyCame},
      {"ten cycles", 2000, [&](int i) { return std::sin(10 * turn(i, 2000)); }, AsTheyCame},
      {"arc that hooks", 60, [&](int i) { return i < 40 ? i : 80 - i; }, AsTheyCame},
      {"scatter", 300, [&](int) { return uniform(random); }, SymbolsOnly},
      {"nine treatments", 90, [](int i) { return i / 10; }, Groups},
      {"a clock of whole seconds", 1010, [](int i) { return i / 10; }, ByX},
      {"steps of two", 20, [](int i) { return i / 2; }, ByX},
      {"one row elsewhere", 20, [](int i) { return i == 1 ? 1 : 100 - 5 * i; }, LateRows},
      {"a clock that runs over", 200, [](int i) { return i % 197; }, AsTheyCame},
      {"eight places of six", 48, [](int i) { return (i / 6) * 5 % 8; }, Groups},
      {"stairs there and back", 45, [](int i) { return -std::abs(i / 3 - 7); }, AsTheyCame},
      {"five at random", 5, [](int i) { return (i * 3) % 5; }, SymbolsOnly},
  };
  for (const auto& row : kCases) {
    TDataSeries series;
    series.SetDuplicatesAllowed(true);
    for (int i = 0; i < row.points; ++i) series.AddPoint(row.x(i), i);
    EXPECT_EQ(SuggestLineOrder(series), row.expected) << row.what;
    if (row.expected != AsTheyCame) continue;
    DataState state = series.State();
    state.settings.source.XDataColumn = "lon [deg]";
    state.settings.source.YDataColumn = "lat [deg]";
    series.SetState(state);
    EXPECT_EQ(SuggestLineOrder(series), Places) << row.what;
  }
}

}  // namespace
}  // namespace tarnwick
