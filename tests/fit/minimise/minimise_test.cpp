// The minimisers of a scalar objective, on objectives written out by hand whose minima are known.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

#include "base/undefined.h"
#include "fit/minimise/minimise_method.h"
#include "support/cancelling_progress.h"

namespace tarnwick {
namespace {

using Point = std::vector<double>;
using Span = std::span<const double>;

double Square(double value) {
  return value * value;
}

double Rosenbrock(Span p) {
  return 100 * Square(p[1] - p[0] * p[0]) + Square(1 - p[0]);
}

double PowellSingular(Span p) {
  return Square(p[0] + 10 * p[1]) + 5 * Square(p[2] - p[3]) + Square(Square(p[1] - 2 * p[2])) +
         10 * Square(Square(p[0] - p[3]));
}

double Beale(Span p) {
  return Square(1.5 - p[0] * (1 - p[1])) + Square(2.25 - p[0] * (1 - Square(p[1]))) +
         Square(2.625 - p[0] * (1 - p[1] * Square(p[1])));
}

double Wood(Span p) {
  return 100 * Square(p[1] - Square(p[0])) + Square(1 - p[0]) + 90 * Square(p[3] - Square(p[2])) +
         Square(1 - p[2]) + 10 * Square(p[1] + p[3] - 2) + 0.1 * Square(p[1] - p[3]);
}

// A bowl of any dimension whose axes differ and are coupled; its minimum 2 at 1, 2, 3...
double Bowl(Span p) {
  double sum = 2;
  double coupling = 0;
  for (std::size_t i = 0; i < p.size(); ++i) {
    const double distance = p[i] - static_cast<double>(i + 1);
    sum += (1 + static_cast<double>(i % 3)) * Square(distance);
    coupling += distance;
  }
  return sum + 0.1 * Square(coupling);
}

// Its minimum 1 at 2; no value below 0.5, which the first steps from the start jump into.
double LogBowl(Span p) {
  return p[0] <= 0.5 ? kUndefined : 1 + Square(std::log(p[0] - 0.5) - std::log(1.5));
}

double Kink(Span p) {
  return std::abs(p[0] - 3) + 1;
}

double InfiniteFence(Span p) {
  return p[0] > 2.5 ? std::numeric_limits<double>::infinity() : 1 + Square(p[0] - 2);
}

double MinusInfinityBeyond(Span p) {
  return p[0] > 4 ? -std::numeric_limits<double>::infinity() : 1 + Square(p[0] - 2);
}

// An objective that keeps every point it was asked for.
class Recorder {
 public:
  explicit Recorder(ScalarObjective objective) : objective_(std::move(objective)) {}

  ScalarObjective Objective() {
    return [this](Span p) {
      points.emplace_back(p.begin(), p.end());
      values.push_back(objective_(p));
      return values.back();
    };
  }

  double LowestValue() const {
    double lowest = std::numeric_limits<double>::infinity();
    for (const double value : values) {
      if (std::isfinite(value)) lowest = std::min(lowest, value);
    }
    return lowest;
  }

  std::vector<Point> points;
  std::vector<double> values;

 private:
  ScalarObjective objective_;
};

// What holds of every run, whatever its method: the outcome tells of the best point among all that were asked for.
MinimiseOutcome RunChecked(const MinimiseMethod& method, const ScalarObjective& objective,
                           const Point& start, const MinimiseOptions& options) {
  Recorder recorder(objective);
  NoProgress progress;
  MinimiseOutcome outcome = method.minimise(recorder.Objective(), start, options, progress);
  EXPECT_EQ(outcome.evaluations, static_cast<std::int64_t>(recorder.points.size()));
  EXPECT_EQ(outcome.changed, outcome.p != start);
  EXPECT_FALSE(outcome.stop_test.empty());
  if (!Failed(outcome.why)) {
    EXPECT_EQ(outcome.value, recorder.LowestValue());
    EXPECT_EQ(outcome.value, objective(outcome.p));
    EXPECT_EQ(outcome.start_value, objective(start));
  }
  return outcome;
}

const MinimiseMethod& Method(FitProcType type) {
  return *FindScalarMinimiseMethod(type);
}

double DigitsOf(const Point& found, const Point& expected) {
  double worst = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    worst =
        std::max(worst, std::abs(found[i] - expected[i]) / std::max(1.0, std::abs(expected[i])));
  }
  return -std::log10(std::max(worst, 1e-16));
}

struct Expected {
  double digits = 0;  ///< of the parameters, at least
  StopReason why = StopReason::Converged;
};

// Where the first simplex, as small as the tolerance, already agrees to the tolerance.
constexpr Expected kAtOnce{-99, StopReason::NoFurtherDescent};

// Iterations and evaluations of the first three by a program of its own, written after the published methods; 0: not run.
using Counts = std::array<std::array<int, 2>, 3>;

struct Problem {
  const char* name;
  ScalarObjective objective;
  Point start;
  Point minimum;
  std::array<Expected, 4> expected;  // Powell, simplex, conjugate gradient, simplex and Powell
  Counts counts;
};

void PrintTo(const Problem& problem, std::ostream* out) {
  *out << problem.name;
}

Point Counted(std::size_t n) {
  Point p;
  for (std::size_t i = 0; i < n; ++i) p.push_back(static_cast<double>(i + 1));
  return p;
}

class MinimiseProblem : public ::testing::TestWithParam<Problem> {};

TEST_P(MinimiseProblem, IsSolvedToItsDigits) {
  const Problem& problem = GetParam();
  const MinimiseOptions options{.tolerance = 3e-8, .max_iterations = 1000, .every_step = {}};
  for (std::size_t i = 0; i < problem.expected.size(); ++i) {
    const MinimiseMethod& method = ScalarMinimiseMethods()[i];
    SCOPED_TRACE(method.name);
    const MinimiseOutcome outcome = RunChecked(method, problem.objective, problem.start, options);
    EXPECT_EQ(outcome.why, problem.expected[i].why) << outcome.stop_test;
    EXPECT_GE(DigitsOf(outcome.p, problem.minimum), problem.expected[i].digits)
        << outcome.stop_test;
    if (i == problem.counts.size() || problem.counts[i][1] == 0) continue;
    EXPECT_EQ(outcome.iterations, problem.counts[i][0]);
    // Rounding may cost a step along a line or save it.
    EXPECT_NEAR(static_cast<double>(outcome.evaluations), problem.counts[i][1],
                0.005 * problem.counts[i][1]);
  }
}

// Where the simplex ends in the minimum itself, with vertices that differ by a few units in the last place.
constexpr Expected kShrunk{12, StopReason::NoFurtherDescent};
constexpr Expected kSlow{2, StopReason::IterationLimit};

std::vector<Problem> Problems() {
  std::vector<Problem> all;
  const auto add = [&all](const char* name, const ScalarObjective& objective, const Point& start,
                          const Point& minimum, const std::array<Expected, 4>& expected,
                          const Counts& counts = {}) {
    all.push_back({name, objective, start, minimum, expected, counts});
  };
  add("Rosenbrock", Rosenbrock, {-1.2, 1}, {1, 1}, {{{8}, kShrunk, {8}, kShrunk}},
      {{{29, 1260}, {246, 488}, {19, 346}}});
  add("Powell singular", PowellSingular, {3, -1, 0, 1}, {0, 0, 0, 0}, {{{6}, {-1}, kSlow, {6}}},
      {{{51, 2411}, {246, 408}, {1000, 15705}}});
  add("Beale", Beale, {1, 1}, {3, 0.5}, {{{8}, {8}, {8}, kShrunk}},
      {{{7, 277}, {214, 414}, {14, 221}}});
  add("Wood", Wood, {-3, -1, -3, -1}, {1, 1, 1, 1}, {{{8}, kAtOnce, {6}, {8}}},
      {{{30, 1199}, {0, 6}, {170, 3098}}});
  add("bowl of 1", Bowl, Point(1, 0.5), Counted(1), {{{8}, kAtOnce, {8}, {8}}},
      {{{2, 46}, {0, 3}, {2, 31}}});
  add("bowl of 2", Bowl, Point(2, 0.0), Counted(2), {{{8}, kAtOnce, {8}, {8}}},
      {{{3, 114}, {0, 4}, {3, 46}}});
  add("bowl of 7", Bowl, Point(7, -3.0), Counted(7), {{{4}, kAtOnce, {8}, {4}}},
      {{{6, 369}, {0, 9}, {7, 160}}});
  add("bowl of 32", Bowl, Point(32, 1.5), Counted(32), {{{4}, kAtOnce, {8}, {4}}},
      {{{15, 4102}, {0, 34}, {7, 511}}});
  add("undefined region", LogBowl, {0.6}, {2}, {{{7}, {4}, {7}, {7}}});
  add("infinite region", InfiniteFence, {-30}, {2}, {{{8}, kAtOnce, {8}, {8}}});
  add("minus infinity counts as undefined", MinusInfinityBeyond, {-30}, {2},
      {{{8}, kAtOnce, {8}, {8}}});
  add("kink", Kink, {-7}, {3}, {{{8}, kAtOnce, {8}, {8}}});
  return all;
}

INSTANTIATE_TEST_SUITE_P(Table, MinimiseProblem, ::testing::ValuesIn(Problems()));

// Runs that end otherwise than at a minimum.
struct Ending {
  const char* name;
  ScalarObjective objective;
  Point start;
  StopReason why;
  const char* text;  ///< somewhere in the stop test
  StopReason simplex_why;
};

TEST(Minimise, SaysHowItEndedOtherwise) {
  using enum StopReason;
  const auto flat = [](Span) { return 7.0; };
  const auto falling = [](Span p) { return 2 * p[0]; };
  const auto nowhere = [](Span) { return kUndefined; };
  const auto here = [](Span p) { return p[0] == 1.5 ? 4.0 : kUndefined; };
  const std::vector<Ending> endings{
      {"flat", flat, {1, 2, 0}, NoFurtherDescent, "", NoFurtherDescent},
      {"falling", falling, {0.5}, NoFurtherDescent, "falls without end", IterationLimit},
      {"undefined", nowhere, {1, 2}, UndefinedAtStart, "no value", UndefinedAtStart},
      {"one point", here, {1.5}, NoFurtherDescent, "no step", NoFurtherDescent},
      {"nothing", flat, {}, NothingVaried, "no parameter", NothingVaried},
      {"33", Bowl, Point(33, 0.0), TooManyParameters, "too many", TooManyParameters},
  };
  for (const Ending& ending : endings) {
    for (const MinimiseMethod& method : ScalarMinimiseMethods()) {
      SCOPED_TRACE(::testing::Message() << ending.name << ", " << method.name);
      Recorder recorder(ending.objective);
      NoProgress progress;
      const MinimiseOutcome outcome =
          method.minimise(recorder.Objective(), ending.start, {}, progress);
      const bool simplex = method.type == FitProcType::cfp_Simplex;
      EXPECT_EQ(outcome.why, simplex ? ending.simplex_why : ending.why) << outcome.stop_test;
      EXPECT_THAT(outcome.stop_test, ::testing::HasSubstr(simplex ? "" : ending.text));
      EXPECT_LE(recorder.points.size(), 3000U);
      if (outcome.why == TooManyParameters) {
        EXPECT_EQ(outcome.message,
                  "Error: Maximum Number of Varied Parameters Nmax = 32 Exceeded!");
        EXPECT_TRUE(recorder.points.empty());
      }
      EXPECT_EQ(outcome.message.empty(), !Failed(outcome.why));
      EXPECT_TRUE(!Failed(outcome.why) || outcome.p == ending.start);
    }
  }
}

// A flat direction must not carry its parameter away while another one is fitted.
TEST(Minimise, LeavesAParameterWithoutInfluenceWhereItIs) {
  const auto objective = [](Span p) { return Square(p[0] - 4) + 1; };
  for (const MinimiseMethod& method : ScalarMinimiseMethods()) {
    if (method.type == FitProcType::cfp_Simplex || method.type == FitProcType::cfp_SimplexPowell) {
      continue;  // the first simplex moves every coordinate
    }
    const MinimiseOutcome outcome = RunChecked(method, objective, {1, 5}, {});
    EXPECT_EQ(outcome.p[1], 5) << method.name;
  }
}

TEST(Minimise, ShowsEachStepAndStopsAfterTheIterationUnderWay) {
  for (const MinimiseMethod& method : ScalarMinimiseMethods()) {
    SCOPED_TRACE(method.name);
    std::vector<Point> shown;
    testing::CancellingProgress progress(3);
    const MinimiseOptions options{
        .every_step = [&](Span p) { shown.emplace_back(p.begin(), p.end()); }};
    const MinimiseOutcome outcome = method.minimise(Rosenbrock, Point{-1.2, 1}, options, progress);
    EXPECT_EQ(outcome.why, StopReason::Cancelled);
    EXPECT_EQ(outcome.iterations, 2);
    ASSERT_EQ(shown.size(), 3U);
    EXPECT_GT(Rosenbrock(shown[0]), Rosenbrock(shown[2]));
    EXPECT_EQ(shown.back(), outcome.p);
    EXPECT_LT(outcome.value, outcome.start_value);
  }
}

TEST(Minimise, KeepsToTheIterationLimit) {
  for (const MinimiseMethod& method : ScalarMinimiseMethods()) {
    SCOPED_TRACE(method.name);
    const MinimiseOutcome outcome =
        RunChecked(method, Rosenbrock, {-1.2, 1}, {.max_iterations = 4, .every_step = {}});
    EXPECT_EQ(outcome.why, StopReason::IterationLimit);
    if (method.type != FitProcType::cfp_Simplex && method.type != FitProcType::cfp_SimplexPowell) {
      EXPECT_EQ(outcome.iterations, 4);
    }
  }
}

TEST(Simplex, BeginsWithTheStartAndTheToleranceAndCountsEvaluations) {
  Recorder recorder(Rosenbrock);
  NoProgress progress;
  const Point start{-1.2, 1};
  const double tolerance = 1e-3;
  const MinimiseOutcome outcome =
      Method(FitProcType::cfp_Simplex)
          .minimise(recorder.Objective(), start,
                    {.tolerance = tolerance, .max_iterations = 10, .every_step = {}}, progress);
  ASSERT_GE(recorder.points.size(), 5U);
  EXPECT_EQ(recorder.points[0], start);
  EXPECT_EQ(recorder.points[1], (Point{-1.2 + tolerance, 1}));
  EXPECT_EQ(recorder.points[2], (Point{-1.2, 1 + tolerance}));
  EXPECT_EQ(recorder.points[3], start);
  EXPECT_EQ(outcome.why, StopReason::IterationLimit);
  // 10 a parameter; an iteration under way may end with a contraction and a shrinking of two vertices.
  EXPECT_GE(outcome.evaluations, 20);
  EXPECT_LE(outcome.evaluations, 23);
}

// The objective is told, not computed, so that each branch of a step is taken on purpose. Vertices: 0, 1 (tolerance 1).
TEST(Simplex, ReflectsExpandsContractsAndShrinks) {
  struct Row {
    const char* name;
    std::vector<double> values;  // of start, vertex, start again, then the trials
    std::vector<double> trials;  // the points asked for after these
  };
  const std::vector<Row> rows{
      {"reflection -1, expansion 2 of the new worst", {10, 30, 10, 5, 3}, {-1, -2}},
      {"no gain: contraction 0.5", {10, 30, 10, 50, 8}, {-1, 0.5}},
      {"contraction fails: shrink halfway", {10, 30, 10, 50, 40, 20}, {-1, 0.5, 0.5}},
      {"undefined trials shrink, too", {10, 30, 10, kUndefined, kUndefined, 20}, {-1, 0.5, 0.5}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    std::size_t next = 0;
    Recorder recorder([&](Span) { return next < row.values.size() ? row.values[next++] : 1e9; });
    testing::CancellingProgress progress(2);
    Method(FitProcType::cfp_Simplex)
        .minimise(recorder.Objective(), Point{0}, {.tolerance = 1, .every_step = {}}, progress);
    ASSERT_EQ(recorder.points.size(), 3 + row.trials.size());
    for (std::size_t i = 0; i < row.trials.size(); ++i) {
      EXPECT_EQ(recorder.points[3 + i], Point{row.trials[i]});
    }
  }
}

TEST(Simplex, SaysWhichParameterItsToleranceCannotMove) {
  const auto objective = [](Span p) { return Square(p[0] - 2) + Square(p[1] / 1e12 - 2); };
  const MinimiseOutcome outcome =
      RunChecked(Method(FitProcType::cfp_Simplex), objective, {1.999, 1e12}, {});
  EXPECT_EQ(outcome.why, StopReason::NoFurtherDescent);
  EXPECT_THAT(outcome.stop_test, ::testing::HasSubstr("varied parameter 2"));
  EXPECT_EQ(outcome.p[1], 1e12);
}

}  // namespace
}  // namespace tarnwick
