#include "results/model_comparison.h"

#include <gtest/gtest.h>

namespace tarnwick {
namespace {

FitResult Fitted(std::vector<std::string> names, double aicc, double sum,
                 std::vector<std::string> notes) {
  FitResult result;
  result.names = std::move(names);
  result.statistics.aicc = aicc;
  result.statistics.sum_of_squares = sum;
  result.verdict.summary = notes.empty() ? "Good." : "Doubtful.";
  result.verdict.notes = std::move(notes);
  return result;
}

// What stands in each column and line, for every model: the table is made to be pasted.
TEST(ModelComparison, TellsEveryModelsFiguresTestsAndNotes) {
  ModelComparison compared;
  for (const char* name : {"Line", "Parabola", "Step"}) compared.models.push_back({name, {}});
  compared.results = {Fitted({"a", "b"}, 12.5, 0.25, {"One.", "Two."}),
                      Fitted({"a", "b", "c"}, -3.25, 0.125, {}),
                      Fitted({"s"}, 7, 8, {"It did not start."})};
  compared.results[2].outcome.why = StopReason::UndefinedAtStart;
  compared.comparison.ranks = {{1, 0, 0.75}, {0, 15.75, 0.25}, {2, 0, 0}};
  compared.comparison.tests = {{0, 1, 4.5, 1, 17, 0.049}, {0, 1, 4.5, 2, 17, 0.05}};
  EXPECT_EQ(ComparisonAsTable(compared),
            "function\tparameters\tAICc\tdifference\tweight\trss\tverdict\n"
            "Parabola\t3\t-3.25\t0\t0.75\t0.125\tGood.\n"
            "Line\t2\t12.5\t15.75\t0.25\t0.25\tDoubtful.\n"
            "Step\t1\t-\t-\t-\t-\tDoubtful.\n"
            "\n"
            "AICc weighs the sum of squares against the number of parameters: the least is best, a "
            "difference above 10 speaks clearly.\n"
            "Line within Parabola: F(1, 17) = 4.5, probability 0.049: more than chance gains.\n"
            "Line within Parabola: F(2, 17) = 4.5, probability 0.05: no more than chance gains.\n"
            "Line: One.\n"
            "Line: Two.\n"
            "Step: It did not start.\n");
}

}  // namespace
}  // namespace tarnwick
